#include "answers/FileFixture.h"
#include "answers/Subjects.h"
#include "answers/Wording.h"

#include "values/Unique.h"

namespace answers
{
namespace
{
constexpr DWORD dwReadWrite = GENERIC_READ | GENERIC_WRITE;

struct Access
{
    const char* szName;
    DWORD dwAccess;
};
constexpr Access accesses[] = {
    {"nothing", 0},
    {"reading", GENERIC_READ},
    {"writing", GENERIC_WRITE},
    {"both", dwReadWrite},
};

struct Disposition
{
    const char* szName;
    DWORD dwDisposition;
};
constexpr Disposition dispositions[] = {
    {"none", 0},
    {"new", CREATE_NEW},
    {"always new", CREATE_ALWAYS},
    {"existing", OPEN_EXISTING},
    {"any", OPEN_ALWAYS},
    {"truncated", TRUNCATE_EXISTING},
    {"unknown", 6},
};

// Also what the last error is on success, which tells an opened file from a created one.
std::string ShownOpening(HANDLE hFile)
{
    const DWORD dwError = GetLastError();
    return (hFile == INVALID_HANDLE_VALUE ? "failed, error " : "ok, ") + std::to_string(dwError);
}

CUniqueFile Open(const WCHAR* szName, DWORD dwAccess, DWORD dwShareMode, DWORD dwDisposition = OPEN_EXISTING)
{
    SetLastError(4711);
    return CUniqueFile(CreateFileW(szName, dwAccess, dwShareMode, nullptr, dwDisposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

void RecordDispositions(CRecord& record, const std::filesystem::path& folder)
{
    static constexpr const WCHAR* names[] = {
        OLESTR("file"), OLESTR("readonly"), OLESTR("folder"), OLESTR("none"), OLESTR("none\\x"), OLESTR("file\\x"),
    };
    for (const WCHAR* const szName : names)
    {
        for (const auto& disposition : dispositions)
        {
            for (const auto& access : accesses)
            {
                CFileFixture fixture(folder);
                const std::string answer =
                    ShownOpening(Open(fixture.Place(szName), access.dwAccess, FILE_SHARE_READ, disposition.dwDisposition).Get());
                record.Add("open " + Quoted(szName) + ' ' + disposition.szName + " for " + access.szName,
                           answer + "; " + fixture.Shown());
            }
        }
    }
}

void RecordNames(CRecord& record, const std::filesystem::path& folder)
{
    static constexpr const WCHAR* names[] = {
        nullptr,
        OLESTR(""),
        OLESTR("FILE"),
        OLESTR("File"),
        OLESTR("FOLDER\\x"),
        OLESTR("FULL\\Inner"),
        OLESTR("file\\"),
        OLESTR("none\\"),
        OLESTR("folder\\"),
        OLESTR("folder\\\\x"),
        OLESTR("folder/x"),
        OLESTR("full/inner"),
        OLESTR("folder\\.\\x"),
        OLESTR("folder\\..\\file"),
        OLESTR("folder\\..\\x"),
        OLESTR("none\\..\\file"),
        OLESTR("file\\..\\file"),
        OLESTR("."),
        OLESTR(".."),
        OLESTR("file."),
        OLESTR("file.."),
        OLESTR("file "),
        OLESTR("file. ."),
        OLESTR(" file"),
        OLESTR("x."),
        OLESTR("x "),
        OLESTR("x y"),
        OLESTR(".x"),
        OLESTR("x.y.z"),
        OLESTR("a*b"),
        OLESTR("a?b"),
        OLESTR("a<b"),
        OLESTR("a>b"),
        OLESTR("a|b"),
        OLESTR("a\"b"),
        OLESTR("a\tb"),
        OLESTR("a\x01"
               "b"),
        OLESTR("a*\\b"),
        OLESTR("none*\\b"),
        OLESTR("f\u00FCr"),
        OLESTR("\u4E2D\u6587"),
        OLESTR("[x]{y}~!@#$%^&()+=,;'`"),
    };
    static constexpr struct
    {
        const char* szName;
        DWORD dwAccess;
        DWORD dwDisposition;
    } ways[] = {
        {"open", GENERIC_READ, OPEN_EXISTING},
        {"create", GENERIC_WRITE, CREATE_NEW},
        {"open or create", dwReadWrite, OPEN_ALWAYS},
    };
    for (const WCHAR* const szName : names)
    {
        for (const auto& way : ways)
        {
            CFileFixture fixture(folder);
            const std::string answer =
                ShownOpening(Open(fixture.Place(szName), way.dwAccess, FILE_SHARE_READ, way.dwDisposition).Get());
            record.Add(std::string(way.szName) + " the name " + Quoted(szName), answer + "; " + fixture.Shown());
        }
    }
}

struct Share
{
    const char* szName;
    DWORD dwShareMode;
};
constexpr Share shares[] = {
    {"nothing", 0},
    {"reading", FILE_SHARE_READ},
    {"writing", FILE_SHARE_WRITE},
    {"both", FILE_SHARE_READ | FILE_SHARE_WRITE},
    {"deleting", FILE_SHARE_DELETE},
    {"all", FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE},
};

std::string ShownOpener(const Access& access, const Share& share)
{
    return std::string(access.szName) + " sharing " + share.szName;
}

// While the file is open in one way, what becomes of the other ways of opening it, and of its name.
void RecordSecondOpening(CRecord& record, const std::filesystem::path& folder, const Access& access, const Share& share)
{
    const std::string first = "open for " + ShownOpener(access, share);
    {
        CFileFixture fixture(folder);
        const CUniqueFile held = Open(fixture.Place(OLESTR("file")), access.dwAccess, share.dwShareMode);
        for (const auto& otherAccess : accesses)
        {
            for (const auto& otherShare : shares)
            {
                const CUniqueFile other = Open(fixture.Place(OLESTR("file")), otherAccess.dwAccess, otherShare.dwShareMode);
                record.Add(first + ", then for " + ShownOpener(otherAccess, otherShare), ShownOpening(other.Get()));
            }
        }
        const CUniqueFile replaced =
            Open(fixture.Place(OLESTR("file")), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, CREATE_ALWAYS);
        const std::string answer = ShownOpening(replaced.Get());
        record.Add(first + ", then replaced", answer + "; " + fixture.Shown());
    }
    static constexpr struct
    {
        const char* szName;
        BOOL (*pfnAct)(const WCHAR* szFile, const WCHAR* szOther);
    } acts[] = {
        {"deleted", [](const WCHAR* szFile, const WCHAR*) { return DeleteFileW(szFile); }},
        {"moved",
         [](const WCHAR* szFile, const WCHAR*) { return MoveFileW(szFile, (CWideString(szFile) + OLESTR("2")).c_str()); }},
        {"moved onto",
         [](const WCHAR* szFile, const WCHAR* szOther) { return MoveFileExW(szOther, szFile, MOVEFILE_REPLACE_EXISTING); }},
    };
    for (const auto& act : acts)
    {
        CFileFixture fixture(folder);
        CUniqueFile held = Open(fixture.Place(OLESTR("file")), access.dwAccess, share.dwShareMode);
        SetLastError(4711);
        const std::string answer =
            ShownSuccess(act.pfnAct(fixture.Place(OLESTR("file")), fixture.Place(OLESTR("other"))) != FALSE);
        held.Reset();
        record.Add(first + ", then " + act.szName, answer + "; " + fixture.Shown());
    }
}

void RecordSharing(CRecord& record, const std::filesystem::path& folder)
{
    for (const auto& access : accesses)
    {
        for (const auto& share : shares)
            RecordSecondOpening(record, folder, access, share);
    }
}
} // namespace

void RecordFiles(CRecord& record, const std::filesystem::path& folder)
{
    RecordDispositions(record, folder);
    RecordNames(record, folder);
    RecordSharing(record, folder);
    RecordOpenFiles(record, folder);
    RecordFileNames(record, folder);
    RecordStreams(record, folder);
}
} // namespace answers
