#include "answers/MutexRecord.h"
#include "answers/Wording.h"

#include "tests/support/TestFolder.h"
#include "values/Unique.h"

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace answers
{
namespace
{
// Another thread, which does what it is given while the caller waits.
class COtherThread
{
public:
    COtherThread() : m_thread([this] { Run(); })
    {
    }
    ~COtherThread()
    {
        Do(nullptr);
        m_thread.join();
    }
    COtherThread(const COtherThread&) = delete;
    COtherThread& operator=(const COtherThread&) = delete;

    // A null work ends the thread.
    void Do(std::function<void()> work)
    {
        std::unique_lock lock(m_lock);
        m_work = std::move(work);
        m_bPending = true;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return !m_bPending; });
    }

private:
    void Run()
    {
        std::unique_lock lock(m_lock);
        for (bool bEnds = false; !bEnds;)
        {
            m_changed.wait(lock, [this] { return m_bPending; });
            bEnds = !m_work;
            if (m_work)
                m_work();
            m_bPending = false;
            m_changed.notify_all();
        }
    }

    std::mutex m_lock;
    std::condition_variable m_changed;
    std::function<void()> m_work;
    bool m_bPending = false;
    std::thread m_thread;
};

enum class Act
{
    Wait,
    Release,
    End, // of the other thread; the next step there has a new one
};
struct MutexStep
{
    char who; // 'A' asks, 'B' is another thread
    Act act;
    DWORD dwMilliseconds = 0;
};
struct MutexCase
{
    const char* szName;
    bool bOwned;
    std::vector<MutexStep> steps;
};

const MutexCase mutexCases[] = {
    {"owned from the start",
     true,
     {{'B', Act::Wait},
      {'B', Act::Wait, 20},
      {'B', Act::Release},
      {'A', Act::Release},
      {'A', Act::Release},
      {'B', Act::Wait},
      {'A', Act::Wait},
      {'B', Act::Release}}},
    {"free from the start",
     false,
     {{'A', Act::Release}, {'B', Act::Release}, {'A', Act::Wait}, {'A', Act::Release}, {'A', Act::Release}}},
    {"taken twice",
     false,
     {{'A', Act::Wait},
      {'A', Act::Wait, 10},
      {'B', Act::Wait},
      {'A', Act::Release},
      {'B', Act::Wait},
      {'B', Act::Release},
      {'A', Act::Release},
      {'B', Act::Wait},
      {'B', Act::Release}}},
    {"owned and taken", true, {{'A', Act::Wait}, {'A', Act::Release}, {'B', Act::Wait}, {'A', Act::Release}, {'B', Act::Wait}}},
    {"without end",
     false,
     {{'A', Act::Wait, INFINITE},
      {'A', Act::Wait, INFINITE},
      {'A', Act::Release},
      {'A', Act::Release},
      {'B', Act::Wait, INFINITE},
      {'A', Act::Wait, 10},
      {'B', Act::Release}}},
    {"abandoned",
     false,
     {{'B', Act::Wait},
      {'A', Act::Wait},
      {'B', Act::End},
      {'A', Act::Wait},
      {'A', Act::Wait},
      {'A', Act::Release},
      {'A', Act::Release},
      {'A', Act::Release},
      {'B', Act::Wait}}},
    {"abandoned when taken twice",
     false,
     {{'B', Act::Wait}, {'B', Act::Wait}, {'B', Act::End}, {'A', Act::Wait, INFINITE}, {'A', Act::Release}, {'A', Act::Release}}},
    {"abandoned and taken by another thread",
     false,
     {{'B', Act::Wait}, {'B', Act::End}, {'B', Act::Wait}, {'A', Act::Wait}, {'B', Act::Release}, {'A', Act::Wait}}},
    {"abandoned twice",
     false,
     {{'B', Act::Wait},
      {'B', Act::End},
      {'B', Act::Wait},
      {'B', Act::End},
      {'A', Act::Wait},
      {'A', Act::Release},
      {'A', Act::Wait}}},
    {"given back before the end", false, {{'B', Act::Wait}, {'B', Act::Release}, {'B', Act::End}, {'A', Act::Wait}}},
};

std::string TakeMutexStep(HANDLE hMutex, const MutexStep& step)
{
    SetLastError(4711);
    if (step.act == Act::Release)
        return ShownSuccess(ReleaseMutex(hMutex) != FALSE);
    const DWORD dwResult = WaitForSingleObject(hMutex, step.dwMilliseconds);
    switch (dwResult)
    {
    case WAIT_OBJECT_0:
        return "taken";
    case WAIT_ABANDONED:
        return "taken, abandoned";
    case WAIT_TIMEOUT:
        return "out of time";
    default:
        return std::to_string(dwResult) + ", error " + std::to_string(GetLastError());
    }
}

void RecordMutex(CRecord& record, const MutexCase& mutexCase)
{
    const CUniqueMutex mutex(CreateMutexW(nullptr, mutexCase.bOwned ? TRUE : FALSE, nullptr));
    auto other = std::make_unique<COtherThread>();
    unsigned uStep = 0;
    for (const auto& step : mutexCase.steps)
    {
        const std::string question =
            std::string("mutex ") + mutexCase.szName + ", step " + std::to_string(++uStep) + ": " + step.who;
        if (step.act == Act::End)
        {
            other = nullptr;
            other = std::make_unique<COtherThread>();
            continue;
        }
        std::string answer;
        const auto take = [&] { answer = TakeMutexStep(mutex.Get(), step); };
        if (step.who == 'B')
            other->Do(take);
        else
            take();
        record.Add(question +
                       (step.act == Act::Wait ? " waits " + std::to_string(static_cast<int>(step.dwMilliseconds)) : " releases"),
                   answer);
    }
}

void RecordWrongHandles(CRecord& record, const std::filesystem::path& folder)
{
    tests::WriteBytes(folder / "plain", "x");
    const CUniqueFile file(CreateFileW((FolderName(folder) + OLESTR("\\plain")).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                       OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    const HANDLE hClosed = CreateMutexW(nullptr, FALSE, nullptr);
    CloseHandle(hClosed);
    const struct
    {
        const char* szName;
        HANDLE hMutex;
        bool bMayWait;
    } handles[] = {{"null", nullptr, true},
                   {"closed", hClosed, true},
                   {"no object", reinterpret_cast<HANDLE>(INT_PTR{0x77770}), true},
                   {"a file", file.Get(), false}};
    for (const auto& handle : handles)
    {
        const std::string name = std::string(" a handle that is ") + handle.szName;
        if (handle.bMayWait)
            record.Add("wait for" + name, TakeMutexStep(handle.hMutex, {'A', Act::Wait}));
        record.Add("release" + name, TakeMutexStep(handle.hMutex, {'A', Act::Release}));
        if (handle.bMayWait)
            record.Add("close" + name, ShownSuccess(CloseHandle(handle.hMutex) != FALSE));
    }
    SetLastError(4711);
    const CUniqueMutex mutex(CreateMutexW(nullptr, FALSE, nullptr));
    record.Add("last error of a new mutex", std::to_string(GetLastError()));
}
} // namespace

void RecordMutexes(CRecord& record, const std::filesystem::path& folder)
{
    for (const auto& mutexCase : mutexCases)
        RecordMutex(record, mutexCase);
    RecordWrongHandles(record, folder);
}
} // namespace answers
