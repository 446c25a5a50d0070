#include "simulator/ProfileStore.h"

#include "simulator/Adapters.h"
#include "simulator/ReasonCodes.h"
#include "simulator/ServiceError.h"
#include "simulator/ServiceFolder.h"
#include "simulator/files/StagedFile.h"
#include "values/Utf8Text.h"

#include <algorithm>
#include <charconv>

namespace simulator
{
namespace
{
namespace fs = std::filesystem;

constexpr const char* profileExtension = ".xml";
constexpr const char* flagsExtension = ".flags";

// Long enough to recognise a network by; the name inside the file is what counts.
constexpr std::size_t cchLongestStem = 80;

bool IsFileNameCharacter(WCHAR unit)
{
    constexpr CWideView others = OLESTR("-_ ");
    return (unit >= OLESTR('a') && unit <= OLESTR('z')) || (unit >= OLESTR('A') && unit <= OLESTR('Z')) ||
           (unit >= OLESTR('0') && unit <= OLESTR('9')) || others.find(unit) != CWideView::npos;
}

// The name that the platform's own export gives a profile's file, with what a file system may refuse written as the
// code unit's number. The words in front keep device names ("con") ordinary.
CWideString FileStem(CWideView name)
{
    constexpr CWideView digits = OLESTR("0123456789ABCDEF");
    CWideString stem = OLESTR("Wi-Fi-");
    for (const WCHAR unit : name)
    {
        if (stem.size() >= cchLongestStem)
            break;
        if (IsFileNameCharacter(unit))
        {
            stem.push_back(unit);
            continue;
        }
        stem.push_back(OLESTR('%'));
        for (int shift = 12; shift >= 0; shift -= 4)
            stem.push_back(digits[(static_cast<unsigned>(unit) >> shift) & 0xF]);
    }
    return stem;
}

// The text of a file that a person or a tool wrote: UTF-8 or UTF-16. Nothing when it is neither.
std::optional<CWideString> DecodeFile(std::string_view bytes)
{
    const auto [form, cbMark] = BeginningOf(bytes);
    bytes.remove_prefix(cbMark);
    if (form == UnicodeForm::Utf8)
        return WideOfUtf8(bytes);
    return bytes.size() % 2 == 0 ? std::optional(WideOfUtf16(bytes, form)) : std::nullopt;
}

std::optional<std::string> ReadFileIfPresent(const fs::path& path)
{
    return IsFile(path) ? std::optional(CFile(path, GENERIC_READ, OPEN_EXISTING).ReadAll()) : std::nullopt;
}

void EnsureFolder(const fs::path& folder)
{
    if (!CreateDirectoryW(folder.string<WCHAR>().c_str(), nullptr) && GetLastError() != ERROR_ALREADY_EXISTS)
        throw CFileError("a folder cannot be made");
}

fs::path FlagsFile(fs::path file)
{
    return file.replace_extension(flagsExtension);
}

// A number in decimal digits; a profile without the file has no flags.
DWORD ReadFlags(const fs::path& profileFile)
{
    const std::string digits = ReadFileIfPresent(FlagsFile(profileFile)).value_or("0");
    DWORD dwFlags = 0;
    std::from_chars(digits.data(), digits.data() + digits.size(), dwFlags);
    return dwFlags;
}

// Flags and text are two files and cannot be replaced in one step: the flags go first and come back when the text
// cannot follow.
void Replace(const fs::path& file, std::string_view encodedText, DWORD dwFlags)
{
    CStagedFile text(file, encodedText);
    const DWORD dwOldFlags = ReadFlags(file);
    if (dwFlags == dwOldFlags)
        return text.Commit();
    CStagedFile(FlagsFile(file), std::to_string(dwFlags)).Commit();
    try
    {
        text.Commit();
    }
    catch (...)
    {
        CStagedFile(FlagsFile(file), std::to_string(dwOldFlags)).Commit();
        throw;
    }
}

} // namespace

std::optional<std::string> EncodeFile(CWideView text)
{
    auto bytes = Utf8OfWide(text);
    // A mark that belongs to the text gets one before it that belongs to the file.
    if (bytes && BeginningOf(*bytes).cbMark != 0)
        bytes->insert(0, bytes->substr(0, BeginningOf(*bytes).cbMark));
    return bytes;
}

CProfileStore::CProfileStore(const fs::path& serviceFolder, const GUID& guid)
    : m_serviceFolder(serviceFolder), m_folder(serviceFolder / "profiles" / fs::path(GuidText(guid)))
{
}

std::optional<StoredProfile> CProfileStore::ReadProfile(const fs::path& file)
{
    const auto bytes = ReadFileIfPresent(file);
    const auto text = bytes ? DecodeFile(*bytes) : std::nullopt;
    if (!text)
        return std::nullopt;
    ProfileVerdict verdict = m_reader.Read(*text);
    if (verdict.dwReason != reasonSuccess)
        return std::nullopt;
    return StoredProfile{std::move(verdict.name), *text, ReadFlags(file), file};
}

std::vector<StoredProfile> CProfileStore::ReadFolder()
{
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(m_folder, error), end; !error && entry != end; entry.increment(error))
    {
        if (entry->path().extension() == profileExtension)
            files.push_back(entry->path());
    }
    std::sort(files.begin(), files.end());

    std::vector<StoredProfile> profiles;
    for (const fs::path& file : files)
    {
        if (auto profile = ReadProfile(file))
            profiles.push_back(std::move(*profile));
    }
    return profiles;
}

std::optional<StoredProfile> CProfileStore::Find(CWideView name)
{
    const auto usual = m_folder / fs::path(FileStem(name) + OLESTR(".xml"));
    if (auto profile = ReadProfile(usual); profile && profile->name == name)
        return profile;
    for (StoredProfile& profile : ReadFolder())
    {
        if (profile.name == name)
            return std::move(profile);
    }
    return std::nullopt;
}

std::vector<StoredProfile> CProfileStore::All()
{
    std::vector<StoredProfile> profiles = ReadFolder();
    std::erase_if(profiles, [&](const StoredProfile& profile) { return Find(profile.name)->file != profile.file; });
    return profiles;
}

fs::path CProfileStore::FreeFile(CWideView name) const
{
    const fs::path stem = m_folder / fs::path(FileStem(name));
    for (unsigned uTry = 1;; ++uTry)
    {
        fs::path file = stem;
        if (uTry > 1)
            file += "~" + std::to_string(uTry);
        file += profileExtension;
        if (!fs::exists(fs::symlink_status(file)))
            return file;
    }
}

void CProfileStore::Store(CWideView name, std::string_view encodedText, DWORD dwFlags, bool bOverwrite)
{
    EnsureFolder(m_serviceFolder / "profiles");
    EnsureFolder(m_folder);
    RemoveLeftovers(m_folder, {});
    const auto existing = Find(name);
    Require(!existing || bOverwrite, ERROR_ALREADY_EXISTS);
    Replace(existing ? existing->file : FreeFile(name), encodedText, dwFlags);
}
} // namespace simulator
