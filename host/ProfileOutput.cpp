#include "host/ProfileOutput.h"

#include "host/CommandEnd.h"
#include "host/Difference.h"
#include "host/FileArguments.h"
#include "host/InvalidParts.h"
#include "host/Refusals.h"
#include "host/SafeFile.h"
#include "host/Shown.h"

#include <algorithm>
#include <iostream>

void AddOutputArguments(CLI::App& command, OutputOptions& options)
{
    CLI::Option* pOutput =
        command
            .add_option("-o,--output", options.strFile,
                        std::string("Where the changed profile goes: -, which is standard output, or ") + writtenFileRule)
            ->type_name("FILE|-");
    CLI::Option* pInPlace = command.add_flag("--in-place", options.bInPlace, "Change the profiles themselves")->excludes(pOutput);
    command.add_flag("--dry-run", options.bDryRun, "Show the changes and leave everything as it is")
        ->excludes(pOutput)
        ->excludes(pInPlace);
}

void CheckOutputUsage(const OutputOptions& options, const std::vector<std::string>& paths)
{
    if (!AreOneFile(paths))
    {
        if (!options.strFile.empty())
            throw CLI::ValidationError("--output", "takes one profile; several can be changed with --in-place");
        if (!options.bInPlace && !options.bDryRun)
            throw CLI::ValidationError("PATH", "several profiles need --in-place, or --dry-run to see what it would do");
    }
    if (options.bInPlace && std::find(paths.begin(), paths.end(), standardStream) != paths.end())
        throw CLI::ValidationError("--in-place", "standard input cannot be changed in place");
}

void CProfileOutput::Print(const std::string& strText)
{
    if (m_options.strFile == standardStream)
        std::cerr << EscapedLines(strText);
    else
        m_session.Print(strText);
}

void CProfileOutput::WriteBytes(const CProfileFile& profile, const CProfileFile& changed)
{
    if (m_options.strFile == standardStream)
        m_session.PrintProfile(changed);
    else if (!m_options.strFile.empty())
        WriteSafely(PathOf(m_options.strFile), changed.Bytes());
    else if (m_options.bInPlace && profile.Text() != changed.Text())
        changed.Store();
}

void CProfileOutput::Write(const CProfileFile& profile, const CProfileFile& changed, const std::string& strHeading)
{
    WriteBytes(profile, changed);
    m_nChanged += profile.Text() != changed.Text() ? 1 : 0;
    const std::string& strGoesTo = m_options.strFile;
    Print(InvalidPartsAfter(m_session.Root(), profile, changed) + strHeading +
          ChangeReport(profile.Title(), profile.Text(),
                       strGoesTo.empty()             ? profile.Title()
                       : strGoesTo == standardStream ? "standard output"
                                                     : strGoesTo,
                       changed.Text()));
}

void CProfileOutput::ForEach(const std::vector<std::string>& paths, const std::function<void(const CProfileFile& profile)>& work)
{
    const auto workOn = [&](const std::filesystem::path& file)
    {
        const CProfileFile profile = OpenProfile(file);
        Print(InvalidPartsBefore(profile));
        work(profile);
    };
    const std::vector<std::filesystem::path> files = FilesOf(paths);
    if (AreOneFile(paths))
    {
        workOn(files.front());
        return m_session.Close();
    }
    const std::size_t nRefused = RefusedAmong(files, workOn);
    Print("\n" + std::to_string(files.size()) + (files.size() == 1 ? " profile: " : " profiles: ") + std::to_string(m_nChanged) +
          (m_options.bDryRun ? " would change, " : " changed, ") + std::to_string(files.size() - m_nChanged - nRefused) +
          " unchanged, " + std::to_string(nRefused) + " refused\n");
    m_session.Close();
    if (nRefused != 0)
        throw CommandEnd{exitRefused};
}
