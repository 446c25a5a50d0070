#include "answers/Subjects.h"
#include "answers/Wording.h"

#include <algorithm>
#include <vector>

namespace answers
{
namespace
{
constexpr WCHAR filler = OLESTR('#');
constexpr DWORD cchLargest = 1024;

// A function that hands out a text: its result for a buffer and the room in it.
struct TextSource
{
    const char* szName;
    DWORD (*pfnGet)(WCHAR* szBuffer, DWORD cchBuffer);
    bool bKeepsError; // the last error is part of the answer also where the result is not 0
};
constexpr TextSource textSources[] = {
    {"current folder", [](WCHAR* szBuffer, DWORD cchBuffer) { return GetCurrentDirectoryW(cchBuffer, szBuffer); }, false},
    {"system folder",
     [](WCHAR* szBuffer, DWORD cchBuffer) { return static_cast<DWORD>(GetSystemDirectoryW(szBuffer, cchBuffer)); }, false},
    {"program", [](WCHAR* szBuffer, DWORD cchBuffer) { return GetModuleFileNameW(nullptr, szBuffer, cchBuffer); }, true},
    {"locale",
     [](WCHAR* szBuffer, DWORD cchBuffer)
     { return static_cast<DWORD>(GetUserDefaultLocaleName(szBuffer, static_cast<int>(cchBuffer))); },
     false},
};

// The texts differ between machines in length, so results and buffers are told by how they relate to the whole text.
std::string ShownResult(DWORD dwResult, DWORD cchRoom, DWORD cchText)
{
    if (dwResult == 0)
        return "0";
    if (dwResult == cchText || dwResult == cchText + 1)
        return dwResult == cchText ? "the length" : "the length and 1";
    return dwResult == cchRoom ? "the room" : std::to_string(dwResult);
}

std::string ShownBuffer(const std::vector<WCHAR>& buffer, CWideView text)
{
    const auto isFiller = [](WCHAR ch) { return ch == filler; };
    if (std::ranges::all_of(buffer, isFiller))
        return "untouched";
    const auto cchSame = static_cast<std::size_t>(std::ranges::mismatch(buffer, text).in1 - buffer.begin());
    const bool bTerminated = cchSame < buffer.size() && buffer[cchSame] == 0;
    const auto rest = buffer.begin() + static_cast<std::ptrdiff_t>(cchSame) + (bTerminated ? 1 : 0);
    return (cchSame == text.size() ? "all of it" : std::to_string(static_cast<long>(cchSame) - static_cast<long>(text.size()))) +
           (bTerminated ? " and the end" : "") + (std::all_of(rest, buffer.end(), isFiller) ? "" : ", then something else");
}

void RecordTexts(CRecord& record)
{
    for (const auto& source : textSources)
    {
        WCHAR szText[cchLargest] = {};
        source.pfnGet(szText, cchLargest);
        const CWideView text(szText);
        const auto cchText = static_cast<DWORD>(text.size());
        for (const DWORD cchRoom : {DWORD{0}, DWORD{1}, DWORD{2}, cchText - 1, cchText, cchText + 1, cchText + 2, cchText + 50})
        {
            std::vector<WCHAR> buffer(cchText + 60, filler);
            SetLastError(4711);
            const DWORD dwResult = source.pfnGet(buffer.data(), cchRoom);
            const DWORD dwError = GetLastError();
            const std::string room =
                cchRoom < 3 ? std::to_string(cchRoom) : "the length and " + std::to_string(static_cast<int>(cchRoom - cchText));
            std::string answer = ShownResult(dwResult, cchRoom, cchText) + ", buffer " + ShownBuffer(buffer, text);
            if (source.bKeepsError || dwResult == 0)
                answer += ", error " + std::to_string(dwError);
            record.Add(std::string(source.szName) + " with room for " + room, answer);
        }
    }
    for (const auto pfnGet : {textSources[0].pfnGet, textSources[1].pfnGet})
    {
        WCHAR szText[cchLargest] = {};
        const DWORD cchText = pfnGet(szText, cchLargest);
        record.Add("text into nowhere, of no size", ShownResult(pfnGet(nullptr, 0), 0, cchText));
    }
    WCHAR szSystem[MAX_PATH] = {};
    GetSystemDirectoryW(szSystem, MAX_PATH);
    record.Add("system folder", Shown(CWideView(szSystem)));
    WCHAR szLocale[LOCALE_NAME_MAX_LENGTH] = {};
    const int cchLocale = GetUserDefaultLocaleName(szLocale, LOCALE_NAME_MAX_LENGTH);
    record.Add("locale", std::to_string(cchLocale) + ", " + Quoted(szLocale));
}

std::string ShownCurrent(CWideView folderName)
{
    WCHAR szCurrent[cchLargest] = {};
    GetCurrentDirectoryW(cchLargest, szCurrent);
    return ShownPlace(szCurrent, folderName);
}

// "@" at the front of a path stands for the folder, "%" for its drive's letter.
CWideString PathOf(CWideView path, CWideView folderName)
{
    if (path.starts_with(OLESTR('@')))
        return CWideString(folderName).append(path.substr(1));
    if (path.starts_with(OLESTR('%')))
        return CWideString(folderName.substr(0, 1)).append(path.substr(1));
    return CWideString(path);
}

constexpr const WCHAR* folderPaths[] = {
    OLESTR("two"),
    OLESTR("two\\"),
    OLESTR("two\\\\"),
    OLESTR("two/"),
    OLESTR(".\\two"),
    OLESTR("./two"),
    OLESTR("two\\three"),
    OLESTR("two/three"),
    OLESTR("two\\\\three"),
    OLESTR("two\\."),
    OLESTR("two\\.."),
    OLESTR("two\\..\\two"),
    OLESTR("two\\three\\..\\.."),
    OLESTR("."),
    OLESTR(".."),
    OLESTR("..\\"),
    OLESTR("../"),
    OLESTR("..\\one\\two"),
    OLESTR("..\\.\\one"),
    OLESTR("..."),
    OLESTR(""),
    OLESTR(" "),
    OLESTR("none"),
    OLESTR("none\\two"),
    OLESTR("none\\.."),
    OLESTR("none\\..\\two"),
    OLESTR("file"),
    OLESTR("file\\"),
    OLESTR("file\\two"),
    OLESTR("file\\.."),
    OLESTR("@"),
    OLESTR("@\\"),
    OLESTR("@\\\\"),
    OLESTR("@/"),
    OLESTR("@\\one"),
    OLESTR("@/one/two"),
    OLESTR("@\\one\\\\two"),
    OLESTR("@\\one\\.\\two\\..\\two"),
    OLESTR("@\\none"),
    OLESTR("@\\none\\two"),
    OLESTR("two."),
    OLESTR("two.."),
    OLESTR("two "),
    OLESTR("two. "),
    OLESTR("two.\\three"),
    OLESTR("two \\three"),
    OLESTR(" two"),
    OLESTR("two*"),
    OLESTR("two?"),
    OLESTR("two|"),
    OLESTR("t<o"),
    OLESTR("two\t"),
    OLESTR("two\\t?\\.."),
    OLESTR("\\"),
    OLESTR("/"),
    OLESTR("\\none"),
    OLESTR("\\none\\two"),
    OLESTR("\\.."),
    OLESTR("%:"),
    OLESTR("%:two"),
    OLESTR("%:two\\three"),
    OLESTR("%:.."),
    OLESTR("%:."),
    OLESTR("%:none"),
    OLESTR("%:\\"),
    OLESTR("%:/"),
    OLESTR("%:\\none"),
    OLESTR("%:\\.."),
    OLESTR("q:\\"),
    OLESTR("q:two"),
    OLESTR(":two"),
    OLESTR("\u00E4\u4E2D"),
};

void RecordFolderChanges(CRecord& record, const std::filesystem::path& folder, CWideView folderName)
{
    const CWideString start = PathOf(OLESTR("@\\one"), folderName);
    std::filesystem::create_directories(folder / "one" / "two" / "three");
    std::filesystem::create_directories(folder / "one" / std::filesystem::path(u"\u00E4\u4E2D"));
    std::ofstream(folder / "one" / "file") << "x";
    for (const WCHAR* const szPath : folderPaths)
    {
        SetCurrentDirectoryW(start.c_str());
        SetLastError(4711);
        const std::string answer = ShownSuccess(SetCurrentDirectoryW(PathOf(szPath, folderName).c_str()) != FALSE);
        record.Add("go to " + Quoted(szPath), answer + ", at " + ShownCurrent(folderName));
        SetCurrentDirectoryW(start.c_str());
        const DWORD dwAttributes = GetFileAttributesW(PathOf(szPath, folderName).c_str());
        const DWORD dwError = GetLastError();
        record.Add("attributes of " + Quoted(szPath), dwAttributes == INVALID_FILE_ATTRIBUTES ? "error " + std::to_string(dwError)
                                                      : (dwAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? "folder"
                                                                                                       : "file");
    }
    // How the name of the place is then written is each platform's own matter.
    for (const WCHAR* const szPath : {OLESTR("TWO"), OLESTR("Two\\THREE"), OLESTR("@\\ONE"), OLESTR("@\\One\\Two")})
    {
        SetCurrentDirectoryW(start.c_str());
        SetLastError(4711);
        record.Add("go to " + Quoted(szPath), ShownSuccess(SetCurrentDirectoryW(PathOf(szPath, folderName).c_str()) != FALSE));
    }
    SetCurrentDirectoryW(start.c_str());
    const std::string nullAnswer = ShownSuccess(SetCurrentDirectoryW(nullptr) != FALSE);
    record.Add("go to null", nullAnswer + ", at " + ShownCurrent(folderName));
}

// A name of exactly this length, in folders that are there up to the last component and are gone with the object.
class CLongPath
{
public:
    CLongPath(CWideView folderName, std::size_t cchPath) : m_path(folderName)
    {
        while (m_path.size() + 2 * cchComponent < cchPath)
        {
            m_path.append(OLESTR("\\")).append(cchComponent, OLESTR('p'));
            m_folders.push_back(m_path);
            CreateDirectoryW(m_path.c_str(), nullptr);
        }
        m_path.append(OLESTR("\\"));
        m_path.append(cchPath - m_path.size(), OLESTR('q'));
    }
    ~CLongPath()
    {
        for (auto folder = m_folders.rbegin(); folder != m_folders.rend(); ++folder)
            RemoveDirectoryW(folder->c_str());
    }
    CLongPath(const CLongPath&) = delete;
    CLongPath& operator=(const CLongPath&) = delete;

    const WCHAR* Get() const
    {
        return m_path.c_str();
    }

private:
    static constexpr std::size_t cchComponent = 50;

    CWideString m_path;
    std::vector<CWideString> m_folders;
};

void RecordLongPaths(CRecord& record, CWideView folderName)
{
    for (const std::size_t cchPath : {200u, 246u, 247u, 248u, 249u, 257u, 258u, 259u, 260u, 261u, 300u, 400u})
    {
        const std::string length = " a path of " + std::to_string(cchPath);
        const CLongPath path(folderName, cchPath);
        const auto add = [&](const char* szAct, bool bDone) { record.Add(szAct + length, ShownSuccess(bDone)); };
        add("attributes of missing", GetFileAttributesW(path.Get()) != INVALID_FILE_ATTRIBUTES);
        add("go to missing", SetCurrentDirectoryW(path.Get()) != FALSE);
        add("delete missing", DeleteFileW(path.Get()) != FALSE);
        add("make", CreateDirectoryW(path.Get(), nullptr) != FALSE);
        add("go to", SetCurrentDirectoryW(path.Get()) != FALSE);
        SetCurrentDirectoryW(CWideString(folderName).c_str());
        add("remove", RemoveDirectoryW(path.Get()) != FALSE);
        const HANDLE hFile = CreateFileW(path.Get(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        add("create", hFile != INVALID_HANDLE_VALUE);
        if (hFile != INVALID_HANDLE_VALUE)
            CloseHandle(hFile);
        add("move", MoveFileW(path.Get(), PathOf(OLESTR("@\\short"), folderName).c_str()) != FALSE);
        DeleteFileW(PathOf(OLESTR("@\\short"), folderName).c_str());
    }
    for (const std::size_t cchName : {100u, 254u, 255u, 256u, 257u})
    {
        SetCurrentDirectoryW(CWideString(folderName).c_str());
        const CWideString name(cchName, OLESTR('n'));
        const std::string length = " a name of " + std::to_string(cchName) + " in the current folder";
        record.Add("attributes of" + length, ShownSuccess(GetFileAttributesW(name.c_str()) != INVALID_FILE_ATTRIBUTES));
        record.Add("delete" + length, ShownSuccess(DeleteFileW(name.c_str()) != FALSE));
    }
}
} // namespace

void RecordPaths(CRecord& record, const std::filesystem::path& folder)
{
    WCHAR szBefore[cchLargest] = {};
    GetCurrentDirectoryW(cchLargest, szBefore);
    const CWideString folderName = FolderName(folder);
    SetCurrentDirectoryW(folderName.c_str());
    RecordTexts(record);
    RecordFolderChanges(record, folder, folderName);
    RecordLongPaths(record, folderName);
    SetCurrentDirectoryW(szBefore);
}
} // namespace answers
