// Where changed profiles go: to another file, over the old ones, or nowhere.
#pragma once

#include "host/ProfilePaths.h"
#include "host/Session.h"

#include <functional>

struct OutputOptions
{
    std::string strFile; // UTF-8; "-" for standard output
    bool bInPlace = false;
    bool bDryRun = false;
};

void AddOutputArguments(CLI::App& command, OutputOptions& options);

// Throws CLI::ValidationError when the profiles cannot go there.
void CheckOutputUsage(const OutputOptions& options, const std::vector<std::string>& paths);

class CProfileOutput
{
public:
    // Both are borrowed.
    CProfileOutput(CSession& session, const OutputOptions& options) : m_session(session), m_options(options)
    {
    }

    // Tells the person. A profile on standard output stays alone there.
    void Print(const std::string& strText);

    // Writes the changed profile where it is to go and tells the difference below the heading, with what became of invalid
    // parts. Throws CHostError.
    void Write(const CProfileFile& profile, const CProfileFile& changed, const std::string& strHeading = {});

    // Does the work on each profile, which is to write it, and closes the session. Of several profiles what is refused of one
    // is told and stops no other; at the end CommandEnd is thrown when there was such.
    void ForEach(const std::vector<std::string>& paths, const std::function<void(const CProfileFile& profile)>& work);

private:
    void WriteBytes(const CProfileFile& profile, const CProfileFile& changed);

    CSession& m_session;
    const OutputOptions& m_options;
    std::size_t m_nChanged = 0;
};
