// What the log needs: files, folders and locks.
#include "answers/Shown.h"
#include "answers/World.h"

#include <io.h>

namespace answers
{
namespace
{
constexpr NamedValue dispositions[] = {{"existing", OPEN_EXISTING}, {"always", OPEN_ALWAYS}};
constexpr NamedValue accesses[] = {
    {"reading", GENERIC_READ},
    {"writing", GENERIC_WRITE},
    {"both", GENERIC_READ | GENERIC_WRITE},
};
constexpr NamedValue shares[] = {
    {"shared", FILE_SHARE_READ | FILE_SHARE_WRITE},
    {"shared-also-for-deleting", FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE},
};
constexpr NamedValue lockKinds[] = {{"exclusive", LOCKFILE_EXCLUSIVE_LOCK}, {"shared", 0}};
constexpr NamedValue places[] = {{"begin", FILE_BEGIN}, {"end", FILE_END}};

// One that is not open is none.
HANDLE File(CWorld& world, CQuestion& question)
{
    const auto found = world.files.find(question.Word());
    return found == world.files.end() ? INVALID_HANDLE_VALUE : found->second.Get();
}

std::string Open(CWorld& world, CQuestion& question)
{
    const std::string name = question.Word();
    const WCHAR* const szFile = world.Place(question);
    const DWORD dwDisposition = question.OneOf(dispositions).dwValue;
    const DWORD dwAccess = question.OneOf(accesses).dwValue;
    const DWORD dwShares = question.OneOf(shares).dwValue;
    CUniqueFile file(CreateFileW(szFile, dwAccess, dwShares, nullptr, dwDisposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    const std::string answer = ShownSuccess(static_cast<bool>(file));
    if (file)
        world.files[name] = std::move(file);
    return answer;
}

std::string Read(CWorld& world, CQuestion& question)
{
    char buffer[64];
    DWORD cbRead = 0;
    const HANDLE hFile = File(world, question);
    const BOOL bRead = ReadFile(hFile, buffer, question.Number<DWORD>(), &cbRead, nullptr);
    return ShownSuccess(bRead, Shown(std::string_view(buffer, cbRead)));
}

std::string Write(CWorld& world, CQuestion& question)
{
    DWORD cbWritten = 0;
    const HANDLE hFile = File(world, question);
    const BOOL bWritten = WriteFile(hFile, "abcdefgh", question.Number<DWORD>(), &cbWritten, nullptr);
    return ShownSuccess(bWritten, std::to_string(cbWritten));
}

std::string Seek(CWorld& world, CQuestion& question)
{
    const HANDLE hFile = File(world, question);
    const auto lDistance = question.Number<LONG>();
    auto lHigh = question.Number<LONG>();
    const DWORD dwPlace = SetFilePointer(hFile, lDistance, &lHigh, question.OneOf(places).dwValue);
    return ShownSuccess(dwPlace != INVALID_SET_FILE_POINTER, std::to_string(lHigh) + " " + std::to_string(dwPlace));
}

std::string Size(CWorld& world, CQuestion& question)
{
    DWORD dwHigh = 77;
    const DWORD dwLow = GetFileSize(File(world, question), &dwHigh);
    return ShownSuccess(dwLow != INVALID_FILE_SIZE, std::to_string(dwHigh) + " " + std::to_string(dwLow));
}

template <bool bLocks>
std::string Lock(CWorld& world, CQuestion& question)
{
    OVERLAPPED region = {};
    const HANDLE hFile = File(world, question);
    region.Offset = question.Number<DWORD>();
    const auto cb = question.Number<DWORD>();
    if (!bLocks)
        return ShownSuccess(UnlockFileEx(hFile, 0, cb, 0, &region));
    return ShownSuccess(LockFileEx(hFile, question.OneOf(lockKinds).dwValue | LOCKFILE_FAIL_IMMEDIATELY, 0, cb, 0, &region));
}

std::string Stream(CWorld& world, CQuestion& question)
{
    std::FILE* const pStream = _wfopen(world.Place(question), OLESTR("w+"));
    return pStream && std::fclose(pStream) == 0 ? "ok" : "failed";
}

template <DWORD dwFlags>
std::string Move(CWorld& world, CQuestion& question)
{
    const WCHAR* const szFrom = world.Place(question);
    const WCHAR* const szTo = world.Place(question);
    return ShownSuccess(dwFlags == 0 ? MoveFileW(szFrom, szTo) : MoveFileExW(szFrom, szTo, dwFlags));
}

constexpr Verb verbs[] = {
    {"open", Open},
    {"close", [](CWorld& world, CQuestion& question) { return ShownSuccess(world.files.erase(question.Word()) != 0); }},
    {"read", Read},
    {"write", Write},
    {"seek", Seek},
    {"size", Size},
    {"flush", [](CWorld& world, CQuestion& question) { return ShownSuccess(FlushFileBuffers(File(world, question))); }},
    {"lock", Lock<true>},
    {"unlock", Lock<false>},
    {"stream", Stream},
    {"exists",
     [](CWorld& world, CQuestion& question) { return std::string(_waccess(world.Place(question), 0) == 0 ? "yes" : "no"); }},
    {"delete", [](CWorld& world, CQuestion& question) { return ShownSuccess(DeleteFileW(world.Place(question))); }},
    {"make", [](CWorld& world, CQuestion& question) { return ShownSuccess(CreateDirectoryW(world.Place(question), nullptr)); }},
    {"move", Move<0>},
    {"replace", Move<MOVEFILE_REPLACE_EXISTING>},
    {"go", [](CWorld& world, CQuestion& question) { return ShownSuccess(SetCurrentDirectoryW(world.Place(question))); }},
};
} // namespace

std::span<const Verb> FileVerbs()
{
    return verbs;
}
} // namespace answers
