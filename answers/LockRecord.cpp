#include "answers/MutexRecord.h"
#include "answers/Subjects.h"
#include "answers/Wording.h"

#include "tests/support/TestFolder.h"
#include "values/Unique.h"

#include <thread>
#include <vector>

namespace answers
{
namespace
{
enum class LockAct
{
    Shared,
    Exclusive,
    Unlock,
    Write, // of the range, by whom and where it says
    Read,
    Close,
};
struct LockStep
{
    char who; // 'A' and 'B' have a handle each to the same file
    LockAct act;
    DWORD dwOffset = 0;
    DWORD cb = 0;
    DWORD dwOffsetHigh = 0;
    DWORD cbHigh = 0;
};
struct LockCase
{
    const char* szName;
    std::vector<LockStep> steps;
};
using enum LockAct;
const LockCase lockCases[] = {
    {"exclusive",
     {{'A', Exclusive, 0, 10},
      {'B', Exclusive, 0, 10},
      {'B', Shared, 0, 10},
      {'B', Exclusive, 9, 1},
      {'B', Exclusive, 10, 5},
      {'A', Exclusive, 12, 5},
      {'B', Unlock, 0, 10},
      {'A', Unlock, 0, 10},
      {'A', Unlock, 0, 10},
      {'B', Exclusive, 0, 10},
      {'A', Exclusive, 5, 1},
      {'B', Unlock, 0, 5},
      {'B', Unlock, 10, 5},
      {'B', Unlock, 0, 10}}},
    {"shared",
     {{'A', Shared, 0, 10},
      {'B', Shared, 5, 10},
      {'B', Exclusive, 0, 5},
      {'A', Exclusive, 10, 5},
      {'A', Shared, 0, 10},
      {'A', Unlock, 0, 10},
      {'B', Exclusive, 0, 5},
      {'A', Unlock, 0, 10},
      {'A', Unlock, 0, 10},
      {'B', Exclusive, 0, 5},
      {'B', Unlock, 0, 5},
      {'B', Unlock, 5, 10}}},
    {"of one's own",
     {{'A', Exclusive, 0, 10},
      {'A', Exclusive, 0, 10},
      {'A', Exclusive, 5, 10},
      {'A', Shared, 0, 10},
      {'A', Unlock, 0, 5},
      {'A', Unlock, 0, 10},
      {'A', Shared, 0, 10},
      {'A', Exclusive, 0, 10},
      {'A', Shared, 5, 10},
      {'A', Unlock, 0, 10},
      {'B', Exclusive, 0, 5},
      {'B', Exclusive, 5, 5},
      {'A', Unlock, 5, 10},
      {'B', Exclusive, 5, 5}}},
    {"of nothing",
     {{'A', Exclusive, 5, 0},
      {'B', Exclusive, 5, 0},
      {'B', Exclusive, 0, 10},
      {'A', Unlock, 5, 0},
      {'A', Exclusive, 20, 0},
      {'B', Unlock, 0, 10}}},
    {"beyond the end",
     {{'A', Exclusive, 1000, 10},
      {'B', Exclusive, 1005, 10},
      {'B', Exclusive, 0, 10},
      {'A', Exclusive, 0, 10, 1, 0},
      {'B', Shared, 5, 1, 1, 0},
      {'B', Shared, 5, 1, 0, 0},
      {'A', Unlock, 0, 10, 1, 0},
      {'B', Shared, 5, 1, 1, 0}}},
    {"of everything",
     {{'A', Exclusive, 0, 0xFFFFFFFF, 0, 0xFFFFFFFF},
      {'B', Shared, 0, 1},
      {'B', Shared, 0, 1, 100, 0},
      {'A', Unlock, 0, 0xFFFFFFFF, 0, 0x7FFFFFFF},
      {'A', Unlock, 0, 0xFFFFFFFF, 0, 0xFFFFFFFF},
      {'B', Exclusive, 0, 0xFFFFFFFF, 0, 0x7FFFFFFF},
      {'A', Exclusive, 0, 1}}},
    {"of the low half",
     {{'A', Exclusive, 0, 0xFFFFFFFF}, {'B', Shared, 0xFFFFFFFE, 1}, {'B', Shared, 0xFFFFFFFF, 1}, {'A', Unlock, 0, 0xFFFFFFFF}}},
    {"gone with its handle", {{'A', Exclusive, 0, 10}, {'B', Exclusive, 0, 10}, {'A', Close}, {'B', Exclusive, 0, 10}}},
    {"kept though another handle goes", {{'A', Exclusive, 0, 10}, {'B', Close}, {'B', Exclusive, 0, 10}}},
    {"split by unlocking",
     {{'A', Shared, 0, 10},
      {'A', Shared, 2, 3},
      {'A', Unlock, 0, 10},
      {'B', Exclusive, 0, 2},
      {'B', Exclusive, 2, 1},
      {'B', Exclusive, 5, 5},
      {'A', Unlock, 2, 3},
      {'B', Exclusive, 2, 3}}},
    {"and transfers",
     {{'A', Exclusive, 0, 4},
      {'A', Write, 0, 4},
      {'A', Read, 0, 4},
      {'B', Write, 0, 4},
      {'B', Read, 0, 4},
      {'B', Write, 4, 4},
      {'B', Read, 4, 4},
      {'B', Read, 2, 4},
      {'A', Unlock, 0, 4},
      {'B', Write, 0, 4},
      {'A', Shared, 0, 4},
      {'B', Read, 0, 4},
      {'B', Write, 0, 4},
      {'A', Write, 0, 4}}},
};

CUniqueFile OpenLockFile(const std::filesystem::path& folder, DWORD dwAccess)
{
    return CUniqueFile(CreateFileW((FolderName(folder) + OLESTR("\\locked")).c_str(), dwAccess,
                                   FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::string TakeLockStep(HANDLE hFile, const LockStep& step)
{
    OVERLAPPED place = {};
    place.Offset = step.dwOffset;
    place.OffsetHigh = step.dwOffsetHigh;
    char buffer[16] = "0123456789";
    DWORD cbDone = 0;
    SetLastError(4711);
    switch (step.act)
    {
    case Shared:
        return ShownSuccess(LockFileEx(hFile, LOCKFILE_FAIL_IMMEDIATELY, 0, step.cb, step.cbHigh, &place) != FALSE);
    case Exclusive:
        return ShownSuccess(
            LockFileEx(hFile, LOCKFILE_FAIL_IMMEDIATELY | LOCKFILE_EXCLUSIVE_LOCK, 0, step.cb, step.cbHigh, &place) != FALSE);
    case Unlock:
        return ShownSuccess(UnlockFileEx(hFile, 0, step.cb, step.cbHigh, &place) != FALSE);
    case Write:
        return ShownSuccess(WriteFile(hFile, buffer, step.cb, &cbDone, &place) != FALSE);
    case Read:
        return ShownSuccess(ReadFile(hFile, buffer, step.cb, &cbDone, &place) != FALSE);
    case Close:
        break;
    }
    return "closed";
}

std::string ShownLockStep(const LockStep& step)
{
    static constexpr const char* names[] = {"locks shared", "locks", "unlocks", "writes", "reads", "closes"};
    return std::string(1, step.who) + ' ' + names[static_cast<std::size_t>(step.act)] + ' ' + std::to_string(step.cbHigh) + ':' +
           std::to_string(step.cb) + " from " + std::to_string(step.dwOffsetHigh) + ':' + std::to_string(step.dwOffset);
}

void RecordLockCase(CRecord& record, const std::filesystem::path& folder, const LockCase& lockCase)
{
    tests::WriteBytes(folder / "locked", "0123456789");
    CUniqueFile files[] = {OpenLockFile(folder, GENERIC_READ | GENERIC_WRITE),
                           OpenLockFile(folder, GENERIC_READ | GENERIC_WRITE)};
    unsigned uStep = 0;
    for (const auto& step : lockCase.steps)
    {
        CUniqueFile& file = files[step.who - 'A'];
        const std::string answer = TakeLockStep(file.Get(), step);
        if (step.act == Close)
            file = OpenLockFile(folder, GENERIC_READ | GENERIC_WRITE);
        record.Add(std::string("lock ") + lockCase.szName + ", step " + std::to_string(++uStep) + ": " + ShownLockStep(step),
                   answer);
    }
}

void RecordLockRights(CRecord& record, const std::filesystem::path& folder)
{
    tests::WriteBytes(folder / "locked", "0123456789");
    static constexpr struct
    {
        const char* szName;
        DWORD dwAccess;
    } accesses[] = {
        {"nothing", 0}, {"reading", GENERIC_READ}, {"writing", GENERIC_WRITE}, {"both", GENERIC_READ | GENERIC_WRITE}};
    for (const auto& access : accesses)
    {
        const CUniqueFile file = OpenLockFile(folder, access.dwAccess);
        for (const LockAct act : {Shared, Unlock, Exclusive, Unlock})
        {
            const LockStep step{'A', act, 0, 4};
            record.Add(std::string("opened for ") + access.szName + ": " + ShownLockStep(step), TakeLockStep(file.Get(), step));
        }
    }
    const CUniqueMutex mutex(CreateMutexW(nullptr, FALSE, nullptr));
    const HANDLE wrong[] = {nullptr, INVALID_HANDLE_VALUE, mutex.Get()};
    static constexpr const char* names[] = {"null", "invalid", "a mutex"};
    for (std::size_t i = 0; i < std::size(wrong); ++i)
    {
        for (const LockAct act : {Shared, Exclusive, Unlock})
        {
            const LockStep step{'A', act, 0, 4};
            record.Add(std::string("a handle that is ") + names[i] + ": " + ShownLockStep(step), TakeLockStep(wrong[i], step));
        }
    }
    const CUniqueFile file = OpenLockFile(folder, GENERIC_READ);
    OVERLAPPED place = {};
    record.Add("lock with something reserved",
               ShownSuccess(LockFileEx(file.Get(), LOCKFILE_FAIL_IMMEDIATELY, 1, 1, 0, &place) != FALSE));
    record.Add("unlock with something reserved", ShownSuccess(UnlockFileEx(file.Get(), 1, 1, 0, &place) != FALSE));
}

// A lock that has to wait is had when the other lets go.
void RecordWaitingLock(CRecord& record, const std::filesystem::path& folder)
{
    tests::WriteBytes(folder / "locked", "0123456789");
    const CUniqueFile first = OpenLockFile(folder, GENERIC_READ | GENERIC_WRITE);
    TakeLockStep(first.Get(), {'A', Exclusive, 0, 4});
    std::string answer;
    std::thread other(
        [&]
        {
            const CUniqueFile second = OpenLockFile(folder, GENERIC_READ | GENERIC_WRITE);
            OVERLAPPED place = {};
            answer = ShownSuccess(LockFileEx(second.Get(), LOCKFILE_EXCLUSIVE_LOCK, 0, 4, 0, &place) != FALSE);
        });
    Sleep(100);
    const std::string unlocked = TakeLockStep(first.Get(), {'A', Unlock, 0, 4});
    other.join();
    record.Add("let go of a lock that is waited for", unlocked);
    record.Add("lock that waited", answer);
}
} // namespace

void RecordLocks(CRecord& record, const std::filesystem::path& folder)
{
    RecordMutexes(record, folder);
    for (const auto& lockCase : lockCases)
        RecordLockCase(record, folder, lockCase);
    RecordLockRights(record, folder);
    RecordWaitingLock(record, folder);
}
} // namespace answers
