// Files, folders and locks.
#include "answers/Shown.h"
#include "answers/Subjects.h"

#include "tests/support/TestFolder.h"
#include "values/Unique.h"

#include <io.h>

#include <map>
#include <set>

namespace answers
{
namespace
{
namespace fs = std::filesystem;

constexpr NamedValue dispositions[] = {
    {"new", CREATE_NEW},
    {"anew", CREATE_ALWAYS},
    {"existing", OPEN_EXISTING},
    {"always", OPEN_ALWAYS},
};
constexpr NamedValue accesses[] = {
    {"reading", GENERIC_READ},
    {"writing", GENERIC_WRITE},
    {"both", GENERIC_READ | GENERIC_WRITE},
};
constexpr NamedValue shares[] = {
    {"alone", 0},
    {"with-readers", FILE_SHARE_READ},
    {"shared", FILE_SHARE_READ | FILE_SHARE_WRITE},
    {"shared-also-for-deleting", FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE},
};
constexpr NamedValue lockKinds[] = {{"exclusive", LOCKFILE_EXCLUSIVE_LOCK}, {"shared", 0}};
constexpr NamedValue places[] = {{"begin", FILE_BEGIN}, {"current", FILE_CURRENT}, {"end", FILE_END}};

std::set<std::string> Listed(const fs::path& folder)
{
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
    {
        const auto name = entry.path().lexically_relative(folder).generic_u16string();
        names.insert((name.size() > 100 ? "the path" : Shown(CWideString(name.begin(), name.end()))) +
                     (entry.is_directory() ? "/" : "=" + std::to_string(entry.file_size())));
    }
    return names;
}

// The current folder has "file" and "other" of 10 bytes, an empty "folder", and "full" with "inner" in it. "@" at the front of
// a name stands for the folder, and "path 260" for a name there that is that long in all.
class CFiles final : public CSubject
{
public:
    CFiles()
    {
        fs::create_directories(m_folder.Path() / "folder");
        fs::create_directories(m_folder.Path() / "full");
        for (const char* const szName : {"file", "other", "full/inner"})
            tests::WriteBytes(m_folder.Path() / szName, "0123456789");
        m_names = Listed(m_folder.Path());
        GetCurrentDirectoryW(MAX_PATH, m_szBefore);
        SetCurrentDirectoryW(m_folder.PlatformName().c_str());
        GetCurrentDirectoryW(MAX_PATH, m_szFolder);
    }
    ~CFiles() override
    {
        SetCurrentDirectoryW(m_szBefore);
    }

    // With what became of the folder, once no file is open.
    std::string Answer(CQuestion& question) override
    {
        static constexpr Verb<CFiles> verbs[] = {
            {"open", &CFiles::Open},
            {"close", &CFiles::Close},
            {"read", &CFiles::Read},
            {"write", &CFiles::Write},
            {"seek", &CFiles::Seek},
            {"size", &CFiles::Size},
            {"flush", &CFiles::Flush},
            {"lock", &CFiles::Lock},
            {"unlock", &CFiles::Unlock},
            {"stream", &CFiles::Stream},
            {"exists", &CFiles::Exists},
            {"delete", &CFiles::Delete},
            {"make", &CFiles::Make},
            {"move", &CFiles::Move},
            {"go", &CFiles::Go},
            {"replace", &CFiles::Replace},
            {"attributes", &CFiles::Attributes},
        };
        SetLastError(4711);
        std::string answer = AnswerBy(verbs, *this, question);
        if (!m_files.empty())
            return answer;
        const auto names = Listed(m_folder.Path());
        for (const auto& name : m_names)
            answer += names.contains(name) ? "" : ", without " + name;
        for (const auto& name : names)
            answer += m_names.contains(name) ? "" : ", with " + name;
        return answer;
    }

private:
    const WCHAR* Place(CQuestion& question)
    {
        CWideString& place = m_places[m_cPlaces++ % 2];
        if (question.IsText() || !question.HasMore())
        {
            const CWideView name = question.Text();
            place = name.starts_with(OLESTR('@')) ? m_szFolder + CWideString(name.substr(1)) : CWideString(name);
            return place.c_str();
        }
        if (question.Word() != "path")
            return nullptr;
        place = m_szFolder + CWideString(OLESTR("\\"));
        place.resize(static_cast<std::size_t>(question.Number()), OLESTR('q'));
        return place.c_str();
    }
    HANDLE File(CQuestion& question)
    {
        const auto found = m_files.find(question.Word());
        return found == m_files.end() ? INVALID_HANDLE_VALUE : found->second.Get();
    }

    std::string Open(CQuestion& question)
    {
        const std::string name = question.Word();
        const WCHAR* const szFile = Place(question);
        const DWORD dwDisposition = question.OneOf(dispositions).dwValue;
        const DWORD dwAccess = question.OneOf(accesses).dwValue;
        CUniqueFile file(CreateFileW(szFile, dwAccess, question.OneOf(shares).dwValue, nullptr, dwDisposition,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
        const std::string answer = ShownSuccess(static_cast<bool>(file));
        if (file)
            m_files[name] = std::move(file);
        return answer;
    }
    std::string Close(CQuestion& question)
    {
        return m_files.erase(question.Word()) != 0 ? "ok" : "not open";
    }
    std::string Read(CQuestion& question)
    {
        char buffer[64];
        DWORD cbRead = 77;
        const HANDLE hFile = File(question);
        const BOOL bRead = ReadFile(hFile, buffer, static_cast<DWORD>(question.Number()), &cbRead, nullptr);
        const std::string answer = ShownSuccess(bRead != FALSE);
        return bRead ? answer + ", " + Shown(std::string_view(buffer, cbRead)) : answer;
    }
    std::string Write(CQuestion& question)
    {
        DWORD cbWritten = 77;
        const HANDLE hFile = File(question);
        const BOOL bWritten = WriteFile(hFile, "abcdefgh", static_cast<DWORD>(question.Number()), &cbWritten, nullptr);
        const std::string answer = ShownSuccess(bWritten != FALSE);
        return bWritten ? answer + ", " + std::to_string(cbWritten) : answer;
    }
    std::string Seek(CQuestion& question)
    {
        const HANDLE hFile = File(question);
        const auto lDistance = static_cast<LONG>(question.Number());
        LONG lHigh = static_cast<LONG>(question.Number());
        const DWORD dwPlace = SetFilePointer(hFile, lDistance, &lHigh, question.OneOf(places).dwValue);
        const std::string answer = ShownSuccess(dwPlace != INVALID_SET_FILE_POINTER);
        return answer == "ok" ? answer + ", " + std::to_string(lHigh) + " " + std::to_string(dwPlace) : answer;
    }
    std::string Size(CQuestion& question)
    {
        DWORD dwHigh = 77;
        const DWORD dwLow = GetFileSize(File(question), &dwHigh);
        const std::string answer = ShownSuccess(dwLow != INVALID_FILE_SIZE);
        return answer == "ok" ? answer + ", " + std::to_string(dwHigh) + " " + std::to_string(dwLow) : answer;
    }
    std::string Flush(CQuestion& question)
    {
        return ShownSuccess(FlushFileBuffers(File(question)) != FALSE);
    }
    std::string Lock(CQuestion& question)
    {
        OVERLAPPED region = {};
        const HANDLE hFile = File(question);
        region.Offset = static_cast<DWORD>(question.Number());
        const auto cb = static_cast<DWORD>(question.Number());
        const DWORD dwFlags = question.OneOf(lockKinds).dwValue | LOCKFILE_FAIL_IMMEDIATELY;
        return ShownSuccess(LockFileEx(hFile, dwFlags, 0, cb, 0, &region) != FALSE);
    }
    std::string Unlock(CQuestion& question)
    {
        OVERLAPPED region = {};
        const HANDLE hFile = File(question);
        region.Offset = static_cast<DWORD>(question.Number());
        return ShownSuccess(UnlockFileEx(hFile, 0, static_cast<DWORD>(question.Number()), 0, &region) != FALSE);
    }
    std::string Stream(CQuestion& question)
    {
        std::FILE* const pStream = _wfopen(Place(question), OLESTR("w+"));
        return pStream && std::fclose(pStream) == 0 ? "ok" : "failed";
    }
    std::string Exists(CQuestion& question)
    {
        return _waccess(Place(question), 0) == 0 ? "yes" : "no";
    }
    std::string Attributes(CQuestion& question)
    {
        const DWORD dwAttributes = GetFileAttributesW(Place(question));
        const std::string answer = ShownSuccess(dwAttributes != INVALID_FILE_ATTRIBUTES);
        return answer != "ok" ? answer : (dwAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 ? "folder" : "file";
    }
    std::string Delete(CQuestion& question)
    {
        return ShownSuccess(DeleteFileW(Place(question)) != FALSE);
    }
    std::string Make(CQuestion& question)
    {
        return ShownSuccess(CreateDirectoryW(Place(question), nullptr) != FALSE);
    }
    std::string Move(CQuestion& question)
    {
        const WCHAR* const szFrom = Place(question);
        return ShownSuccess(MoveFileW(szFrom, Place(question)) != FALSE);
    }
    std::string Replace(CQuestion& question)
    {
        const WCHAR* const szFrom = Place(question);
        return ShownSuccess(MoveFileExW(szFrom, Place(question), MOVEFILE_REPLACE_EXISTING) != FALSE);
    }
    std::string Go(CQuestion& question)
    {
        const std::string answer = ShownSuccess(SetCurrentDirectoryW(Place(question)) != FALSE);
        WCHAR szCurrent[MAX_PATH] = {};
        GetCurrentDirectoryW(MAX_PATH, szCurrent);
        const CWideView current(szCurrent);
        return answer + ", at " +
               (current.starts_with(m_szFolder) ? "@" + Shown(current.substr(CWideView(m_szFolder).size()))
                                                : Shown(current.substr(2))); // without the drive
    }

    const tests::CTestFolder m_folder;
    std::set<std::string> m_names;
    WCHAR m_szBefore[MAX_PATH] = {};
    WCHAR m_szFolder[MAX_PATH] = {};
    CWideString m_places[2];
    unsigned m_cPlaces = 0;
    std::map<std::string, CUniqueFile> m_files;
};
} // namespace

std::unique_ptr<CSubject> AskFiles()
{
    return std::make_unique<CFiles>();
}
} // namespace answers
