#include "answers/FileFixture.h"
#include "answers/Wording.h"

#include <io.h>

#include <cerrno>

namespace answers
{
namespace
{
constexpr const WCHAR* oddNames[] = {
    nullptr,
    OLESTR(""),
    OLESTR("file"),
    OLESTR("FILE"),
    OLESTR("file\\"),
    OLESTR("file."),
    OLESTR("file "),
    OLESTR("file\\x"),
    OLESTR("readonly"),
    OLESTR("folder"),
    OLESTR("FOLDER"),
    OLESTR("folder\\"),
    OLESTR("folder\\\\"),
    OLESTR("folder\\."),
    OLESTR("folder\\.."),
    OLESTR("folder\\..\\full"),
    OLESTR("folder/x"),
    OLESTR("folder."),
    OLESTR("full"),
    OLESTR("full\\inner"),
    OLESTR("Full\\INNER"),
    OLESTR("none"),
    OLESTR("none\\"),
    OLESTR("none\\x"),
    OLESTR("none\\..\\file"),
    OLESTR("none\\..\\y"),
    OLESTR("a*b"),
    OLESTR("a?b"),
    OLESTR("a|b"),
    OLESTR("a\tb"),
    OLESTR("none\\a*b"),
    OLESTR("new."),
    OLESTR("new "),
    OLESTR("\u00E4\u4E2D"),
};

// Files have an attribute more on some platforms and file systems; these two are those that decide anything.
std::string ShownAttributes(const WCHAR* szName)
{
    const DWORD dwAttributes = GetFileAttributesW(szName);
    const std::string success = ShownSuccess(dwAttributes != INVALID_FILE_ATTRIBUTES);
    if (dwAttributes == INVALID_FILE_ATTRIBUTES)
        return success;
    return success + ((dwAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? ", folder" : ", file") +
           ((dwAttributes & FILE_ATTRIBUTE_READONLY) != 0 ? ", read-only" : "");
}

std::string ShownRights(const WCHAR* szName, int nMode)
{
    errno = 0;
    const int nResult = _waccess(szName, nMode);
    return nResult == 0 ? "ok" : std::to_string(nResult) + ", " + ShownErrno(errno);
}

struct NameQuestion
{
    const char* szName;
    std::string (*pfnAsk)(const WCHAR* szName);
};
constexpr NameQuestion nameQuestions[] = {
    {"attributes of", ShownAttributes},
    {"existence of", [](const WCHAR* szName) { return ShownRights(szName, 0); }},
    {"right to write", [](const WCHAR* szName) { return ShownRights(szName, 2); }},
    {"right to read", [](const WCHAR* szName) { return ShownRights(szName, 4); }},
    {"right to read and write", [](const WCHAR* szName) { return ShownRights(szName, 6); }},
    {"delete", [](const WCHAR* szName) { return ShownSuccess(DeleteFileW(szName) != FALSE); }},
    {"make the folder", [](const WCHAR* szName) { return ShownSuccess(CreateDirectoryW(szName, nullptr) != FALSE); }},
    {"remove the folder", [](const WCHAR* szName) { return ShownSuccess(RemoveDirectoryW(szName) != FALSE); }},
};

void RecordSingleNames(CRecord& record, const std::filesystem::path& folder)
{
    for (const auto& question : nameQuestions)
    {
        for (const WCHAR* const szName : oddNames)
        {
            CFileFixture fixture(folder);
            SetLastError(4711);
            const std::string answer = question.pfnAsk(fixture.Place(szName));
            record.Add(std::string(question.szName) + ' ' + Quoted(szName), answer + "; " + fixture.Shown());
        }
    }
}

void RecordMovedNames(CRecord& record, const std::filesystem::path& folder)
{
    static constexpr const WCHAR* sources[] = {
        nullptr,          OLESTR(""),     OLESTR("file"),     OLESTR("file\\"),  OLESTR("readonly"),
        OLESTR("folder"), OLESTR("full"), OLESTR("folder\\"), OLESTR("none\\x"), OLESTR("file\\x"),
        OLESTR("none"),   OLESTR("FILE"), OLESTR("a*b"),      OLESTR("file."),
    };
    static constexpr const WCHAR* targets[] = {
        OLESTR(""),          OLESTR("file"),      OLESTR("other"),   OLESTR("readonly"),        OLESTR("folder"), OLESTR("full"),
        OLESTR("folder\\x"), OLESTR("full\\new"), OLESTR("none\\x"), OLESTR("file\\x"),         OLESTR("new"),    OLESTR("new\\"),
        OLESTR("FILE"),      OLESTR("new."),      OLESTR("a*b"),     OLESTR("folder\\..\\new"),
    };
    for (const bool bReplaces : {false, true})
    {
        for (const WCHAR* const szSource : sources)
        {
            for (const WCHAR* const szTarget : targets)
            {
                CFileFixture fixture(folder);
                const WCHAR* const szFrom = fixture.Place(szSource);
                const WCHAR* const szTo = fixture.Place(szTarget);
                SetLastError(4711);
                const BOOL bMoved = bReplaces ? MoveFileExW(szFrom, szTo, MOVEFILE_REPLACE_EXISTING) : MoveFileW(szFrom, szTo);
                const std::string answer = ShownSuccess(bMoved != FALSE);
                record.Add(std::string(bReplaces ? "replace by moving " : "move ") + Quoted(szSource) + " to " + Quoted(szTarget),
                           answer + "; " + fixture.Shown());
            }
        }
    }
}
} // namespace

void RecordFileNames(CRecord& record, const std::filesystem::path& folder)
{
    RecordSingleNames(record, folder);
    RecordMovedNames(record, folder);
}

void RecordStreams(CRecord& record, const std::filesystem::path& folder)
{
    static constexpr const WCHAR* modes[] = {
        OLESTR("r"),  OLESTR("w"),   OLESTR("a"),   OLESTR("r+"),  OLESTR("w+"),  OLESTR("a+"),  OLESTR("rb"),  OLESTR("wb"),
        OLESTR("ab"), OLESTR("rb+"), OLESTR("r+b"), OLESTR("wb+"), OLESTR("w+b"), OLESTR("ab+"), OLESTR("a+b"), OLESTR("rt"),
        OLESTR("wt"), OLESTR("at+"), OLESTR(""),    OLESTR("x"),   OLESTR("R"),   OLESTR("b"),   OLESTR("+"),   OLESTR("br"),
    };
    static constexpr const WCHAR* names[] = {
        OLESTR("file"),    OLESTR("readonly"), OLESTR("folder"), OLESTR("new"),
        OLESTR("none\\x"), OLESTR("file\\x"),  OLESTR("a*b"),    OLESTR(""),
    };
    for (const WCHAR* const szMode : modes)
    {
        for (const WCHAR* const szName : names)
        {
            CFileFixture fixture(folder);
            errno = 0;
            std::FILE* const pStream = _wfopen(fixture.Place(szName), szMode);
            const int nErrno = errno;
            std::string answer = pStream ? "ok" : ShownErrno(nErrno);
            if (pStream)
            {
                answer += std::fputs("xy", pStream) >= 0 && std::fflush(pStream) == 0 ? ", written" : ", not written";
                std::fclose(pStream);
            }
            record.Add("stream of " + Quoted(szName) + " as " + Quoted(szMode), answer + "; " + fixture.Shown());
        }
    }
}
} // namespace answers
