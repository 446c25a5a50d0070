#include "answers/FileFixture.h"
#include "answers/Wording.h"

#include "values/Unique.h"

namespace answers
{
namespace
{
struct Move
{
    LONG lStart;
    bool bHigh;
    LONG lHigh;
    LONG lDistance;
    DWORD dwMethod;
};
constexpr Move moves[] = {
    {0, false, 0, 0, FILE_BEGIN},
    {0, false, 0, 5, FILE_BEGIN},
    {3, false, 0, 5, FILE_BEGIN},
    {3, false, 0, -1, FILE_BEGIN},
    {3, false, 0, 0, FILE_CURRENT},
    {3, false, 0, 2, FILE_CURRENT},
    {3, false, 0, -3, FILE_CURRENT},
    {3, false, 0, -4, FILE_CURRENT},
    {3, false, 0, 100, FILE_CURRENT},
    {3, false, 0, 0, FILE_END},
    {3, false, 0, -10, FILE_END},
    {3, false, 0, -11, FILE_END},
    {3, false, 0, 7, FILE_END},
    {3, false, 0, 0, 3},
    {3, false, 0, 0, 0xFFFFFFFF},
    {3, true, 0, 5, FILE_BEGIN},
    {3, true, 1, 5, FILE_BEGIN},
    {3, true, -1, -1, FILE_CURRENT},
    {3, true, -1, -4, FILE_CURRENT},
    {3, true, -1, -1, FILE_BEGIN},
    {3, true, 0, -1, FILE_BEGIN},
    {3, true, 0, -2, FILE_CURRENT},
    {3, true, -1, -10, FILE_END},
    {3, true, -1, -11, FILE_END},
    {3, false, 0, 0x7FFFFFFF, FILE_BEGIN},
};

void RecordMoves(CRecord& record, const std::filesystem::path& folder)
{
    CFileFixture fixture(folder);
    const CUniqueFile file(CreateFileW(fixture.Place(OLESTR("file")), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL, nullptr));
    for (const auto& move : moves)
    {
        SetFilePointer(file.Get(), move.lStart, nullptr, FILE_BEGIN);
        LONG lHigh = move.lHigh;
        SetLastError(4711);
        const DWORD dwPlace = SetFilePointer(file.Get(), move.lDistance, move.bHigh ? &lHigh : nullptr, move.dwMethod);
        const DWORD dwError = GetLastError();
        std::string answer = std::to_string(dwPlace);
        if (dwPlace == INVALID_SET_FILE_POINTER)
            answer += ", error " + std::to_string(dwError);
        else if (move.bHigh)
            answer += ", high " + std::to_string(lHigh);
        lHigh = 0;
        const DWORD dwThen = SetFilePointer(file.Get(), 0, &lHigh, FILE_CURRENT);
        record.Add("from " + std::to_string(move.lStart) + " move by " + std::to_string(move.lDistance) +
                       (move.bHigh ? " and high " + std::to_string(move.lHigh) : std::string()) + " the way " +
                       std::to_string(move.dwMethod),
                   answer + "; then at " + std::to_string(dwThen) + ", high " + std::to_string(lHigh));
    }
}

enum class Act
{
    Read,
    Write,
    ReadAt, // at a place that the call names
    WriteAt,
    Seek,
    Size,
    Flush,
};
struct Step
{
    const char* szName;
    Act act;
    DWORD dwPlace;
    DWORD cb;
};
constexpr Step steps[] = {
    {"read", Act::Read, 0, 4},
    {"read", Act::Read, 0, 4},
    {"read", Act::Read, 0, 4},
    {"read at the end", Act::Read, 0, 4},
    {"read nothing", Act::Read, 0, 0},
    {"seek", Act::Seek, 8, 0},
    {"write", Act::Write, 0, 4},
    {"size", Act::Size, 0, 0},
    {"read", Act::Read, 0, 4},
    {"seek", Act::Seek, 2, 0},
    {"write nothing", Act::Write, 0, 0},
    {"size", Act::Size, 0, 0},
    {"write", Act::Write, 0, 3},
    {"seek beyond", Act::Seek, 20, 0},
    {"size", Act::Size, 0, 0},
    {"read beyond", Act::Read, 0, 4},
    {"write beyond", Act::Write, 0, 2},
    {"size", Act::Size, 0, 0},
    {"seek", Act::Seek, 4, 0},
    {"read the gap", Act::Read, 0, 8},
    {"read at", Act::ReadAt, 1, 3},
    {"read on", Act::Read, 0, 2},
    {"read at the end", Act::ReadAt, 22, 3},
    {"read across the end", Act::ReadAt, 21, 3},
    {"read far beyond", Act::ReadAt, 1000, 3},
    {"read nothing beyond", Act::ReadAt, 1000, 0},
    {"write at", Act::WriteAt, 0, 2},
    {"read on", Act::Read, 0, 4},
    {"write at the end", Act::WriteAt, 22, 2},
    {"size", Act::Size, 0, 0},
    {"seek", Act::Seek, 30, 0},
    {"size", Act::Size, 0, 0},
    {"flush", Act::Flush, 0, 0},
};

std::string ShownTransfer(BOOL bDone, DWORD cbDone, std::string_view bytes)
{
    const std::string success = ShownSuccess(bDone != FALSE);
    return success + ", " + std::to_string(cbDone) + (bytes.empty() ? "" : ", " + Shown(bytes));
}

std::string TakeStep(HANDLE hFile, const Step& step)
{
    char buffer[64] = {};
    DWORD cbDone = 77;
    OVERLAPPED place = {};
    place.Offset = step.dwPlace;
    LPOVERLAPPED pPlace = step.act == Act::ReadAt || step.act == Act::WriteAt ? &place : nullptr;
    SetLastError(4711);
    switch (step.act)
    {
    case Act::Read:
    case Act::ReadAt:
    {
        const BOOL bDone = ReadFile(hFile, buffer, step.cb, &cbDone, pPlace);
        return ShownTransfer(bDone, cbDone, std::string_view(buffer, bDone && cbDone <= sizeof(buffer) ? cbDone : 0));
    }
    case Act::Write:
    case Act::WriteAt:
    {
        const BOOL bDone = WriteFile(hFile, "abcdefgh", step.cb, &cbDone, pPlace);
        return ShownTransfer(bDone, cbDone, {});
    }
    case Act::Seek:
        return std::to_string(SetFilePointer(hFile, static_cast<LONG>(step.dwPlace), nullptr, FILE_BEGIN));
    case Act::Flush:
        return ShownSuccess(FlushFileBuffers(hFile) != FALSE);
    case Act::Size:
        break;
    }
    DWORD dwHigh = 77;
    const DWORD dwLow = GetFileSize(hFile, &dwHigh);
    const std::string success = ShownSuccess(dwLow != INVALID_FILE_SIZE);
    return success + ", " + std::to_string(dwLow) + ", high " + std::to_string(dwHigh);
}

void RecordTransfers(CRecord& record, const std::filesystem::path& folder)
{
    static constexpr struct
    {
        const char* szName;
        DWORD dwAccess;
    } accesses[] = {
        {"both", GENERIC_READ | GENERIC_WRITE}, {"reading", GENERIC_READ}, {"writing", GENERIC_WRITE}, {"nothing", 0}};
    for (const auto& access : accesses)
    {
        CFileFixture fixture(folder);
        const CUniqueFile file(CreateFileW(fixture.Place(OLESTR("file")), access.dwAccess, FILE_SHARE_READ, nullptr,
                                           OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        unsigned uStep = 0;
        for (const auto& step : steps)
            record.Add(std::string("open for ") + access.szName + ", step " + std::to_string(++uStep) + ": " + step.szName + ' ' +
                           std::to_string(step.cb),
                       TakeStep(file.Get(), step));
        record.Add(std::string("open for ") + access.szName + ", in the end", fixture.Shown());
    }
}

void RecordWrongHandles(CRecord& record, const std::filesystem::path& folder)
{
    CFileFixture fixture(folder);
    const HANDLE hClosed = CreateFileW(fixture.Place(OLESTR("file")), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL, nullptr);
    CloseHandle(hClosed);
    const CUniqueMutex mutex(CreateMutexW(nullptr, FALSE, nullptr));
    const struct
    {
        const char* szName;
        HANDLE hFile;
    } handles[] = {{"null", nullptr}, {"invalid", INVALID_HANDLE_VALUE}, {"closed", hClosed}, {"a mutex", mutex.Get()}};
    static constexpr Step probes[] = {
        {"read", Act::Read, 0, 4}, {"write", Act::Write, 0, 4}, {"seek", Act::Seek, 1, 0},
        {"size", Act::Size, 0, 0}, {"flush", Act::Flush, 0, 0},
    };
    for (const auto& handle : handles)
    {
        for (const auto& step : probes)
            record.Add(std::string("with a handle that is ") + handle.szName + ": " + step.szName, TakeStep(handle.hFile, step));
    }
}
} // namespace

void RecordOpenFiles(CRecord& record, const std::filesystem::path& folder)
{
    RecordMoves(record, folder);
    RecordTransfers(record, folder);
    RecordWrongHandles(record, folder);
}
} // namespace answers
