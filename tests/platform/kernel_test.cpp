// What the product relies on from files, locks, the mutex and paths.
#include <windows.h>

#include <io.h>
#include <stdio.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <string>
#include <thread>

namespace
{
using Text = std::basic_string<WCHAR>;

class CHandle
{
public:
    explicit CHandle(HANDLE handle) : m_handle(handle)
    {
    }
    ~CHandle()
    {
        Close();
    }
    CHandle(const CHandle&) = delete;
    CHandle& operator=(const CHandle&) = delete;

    HANDLE Get() const
    {
        return m_handle;
    }
    void Close()
    {
        if (m_handle && m_handle != INVALID_HANDLE_VALUE)
            CloseHandle(m_handle);
        m_handle = nullptr;
    }

private:
    HANDLE m_handle;
};

// A folder of its own for every test.
class KernelFiles : public testing::Test
{
protected:
    void SetUp() override
    {
        static std::atomic<unsigned> uCounter{0};
        for (const char digit : "kernel" + std::to_string(GetCurrentProcessId()) + "_" + std::to_string(++uCounter))
            m_folder += static_cast<WCHAR>(digit);
        ASSERT_TRUE(CreateDirectoryW(m_folder.c_str(), nullptr));
    }
    void TearDown() override
    {
        for (const WCHAR* szName : {OLESTR("a.txt"), OLESTR("b.txt")})
            DeleteFileW(In(szName).c_str());
        RemoveDirectoryW(In(OLESTR("sub")).c_str());
        EXPECT_TRUE(RemoveDirectoryW(m_folder.c_str())) << GetLastError();
    }

    Text In(const WCHAR* szName) const
    {
        return m_folder + OLESTR("\\") + szName;
    }
    static HANDLE Open(const Text& path, DWORD dwDisposition, DWORD dwShareMode = FILE_SHARE_READ | FILE_SHARE_WRITE,
                       DWORD dwAccess = GENERIC_READ | GENERIC_WRITE)
    {
        return CreateFileW(path.c_str(), dwAccess, dwShareMode, nullptr, dwDisposition, FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    static void Write(const CHandle& file, const std::string& content)
    {
        DWORD cbWritten = 0;
        ASSERT_TRUE(WriteFile(file.Get(), content.data(), static_cast<DWORD>(content.size()), &cbWritten, nullptr));
        ASSERT_EQ(cbWritten, content.size());
    }

    const Text& Folder() const
    {
        return m_folder;
    }

private:
    Text m_folder;
};

TEST_F(KernelFiles, DispositionsDecideWhatHappensToAFile)
{
    const Text path = In(OLESTR("a.txt"));
    EXPECT_EQ(Open(path, OPEN_EXISTING), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
    {
        const CHandle created(Open(path, CREATE_NEW));
        ASSERT_NE(created.Get(), INVALID_HANDLE_VALUE);
        Write(created, "12345");
    }
    EXPECT_EQ(Open(path, CREATE_NEW), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_FILE_EXISTS);
    {
        const CHandle kept(Open(path, OPEN_ALWAYS));
        EXPECT_EQ(GetFileSize(kept.Get(), nullptr), 5u);
    }
    const CHandle emptied(Open(path, CREATE_ALWAYS));
    EXPECT_EQ(GetFileSize(emptied.Get(), nullptr), 0u);
}

TEST_F(KernelFiles, AMissingFolderIsNotAMissingFile)
{
    EXPECT_EQ(Open(In(OLESTR("none\\a.txt")), OPEN_EXISTING), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(_wfopen(In(OLESTR("none\\a.txt")).c_str(), OLESTR("w+")), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_FALSE(CreateDirectoryW(In(OLESTR("none\\sub")).c_str(), nullptr));
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
    EXPECT_FALSE(DeleteFileW(In(OLESTR("a.txt")).c_str()));
    EXPECT_EQ(GetLastError(), ERROR_FILE_NOT_FOUND);
}

TEST_F(KernelFiles, AFolderIsNoFile)
{
    EXPECT_EQ(Open(Folder(), OPEN_EXISTING), INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_FALSE(DeleteFileW(Folder().c_str()));
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_NE(GetFileAttributesW(Folder().c_str()) & FILE_ATTRIBUTE_DIRECTORY, 0u);
    EXPECT_FALSE(CreateDirectoryW(Folder().c_str(), nullptr));
    EXPECT_EQ(GetLastError(), ERROR_ALREADY_EXISTS);
    EXPECT_EQ(_waccess((Folder() + OLESTR("\\")).c_str(), 0), 0);
    EXPECT_EQ(_waccess(In(OLESTR("none")).c_str(), 0), -1);
}

TEST_F(KernelFiles, MovingNeverReplacesUnlessAsked)
{
    const Text first = In(OLESTR("a.txt"));
    const Text second = In(OLESTR("b.txt"));
    CHandle(Open(first, CREATE_NEW)).Close();
    CHandle(Open(second, CREATE_NEW)).Close();
    EXPECT_FALSE(MoveFileW(first.c_str(), second.c_str()));
    EXPECT_EQ(GetLastError(), ERROR_ALREADY_EXISTS);
    EXPECT_TRUE(MoveFileExW(first.c_str(), second.c_str(), MOVEFILE_REPLACE_EXISTING));
    EXPECT_EQ(GetFileAttributesW(first.c_str()), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(MoveFileW(second.c_str(), first.c_str()));
}

TEST_F(KernelFiles, AFileInUseKeepsItsName)
{
    const Text path = In(OLESTR("a.txt"));
    CHandle file(Open(path, CREATE_NEW));
    EXPECT_FALSE(MoveFileW(path.c_str(), In(OLESTR("b.txt")).c_str()));
    EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);
    EXPECT_FALSE(DeleteFileW(path.c_str()));
    EXPECT_EQ(GetLastError(), ERROR_SHARING_VIOLATION);
    file.Close();
    EXPECT_TRUE(DeleteFileW(path.c_str()));
}

TEST_F(KernelFiles, ATextIsNoModule)
{
    const Text path = In(OLESTR("a.txt"));
    {
        const CHandle file(Open(path, CREATE_NEW));
        Write(file, "neither code nor resources, and long enough to hold the header of either one");
    }
    EXPECT_EQ(LoadLibraryExW(path.c_str(), nullptr, 0), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_BAD_EXE_FORMAT);
}

BOOL Lock(const CHandle& file, DWORD dwFlags, DWORD dwOffset = 0)
{
    OVERLAPPED place = {};
    place.Offset = dwOffset;
    return LockFileEx(file.Get(), dwFlags, 0, 2, 0, &place);
}

BOOL Unlock(const CHandle& file, DWORD dwOffset = 0)
{
    OVERLAPPED place = {};
    place.Offset = dwOffset;
    return UnlockFileEx(file.Get(), 0, 2, 0, &place);
}

TEST_F(KernelFiles, ExclusiveLocksExcludeOtherHandlesOfTheProcess)
{
    const Text path = In(OLESTR("a.txt"));
    const CHandle first(Open(path, CREATE_NEW));
    const CHandle second(Open(path, OPEN_EXISTING));
    ASSERT_TRUE(Lock(first, LOCKFILE_EXCLUSIVE_LOCK));
    EXPECT_FALSE(Lock(second, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY));
    EXPECT_EQ(GetLastError(), ERROR_LOCK_VIOLATION);
    EXPECT_FALSE(Lock(second, LOCKFILE_FAIL_IMMEDIATELY));
    EXPECT_FALSE(Lock(first, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY)) << "not even twice by one handle";
    EXPECT_TRUE(Lock(second, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 2)) << "another range is free";
    EXPECT_TRUE(Unlock(second, 2));
    EXPECT_TRUE(Unlock(first));
    EXPECT_FALSE(Unlock(first)) << "there is nothing left to unlock";
    EXPECT_TRUE(Lock(second, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY));
    EXPECT_TRUE(Unlock(second));
}

TEST_F(KernelFiles, SharedLocksExcludeExclusiveOnesOnly)
{
    const Text path = In(OLESTR("a.txt"));
    const CHandle first(Open(path, CREATE_NEW));
    const CHandle second(Open(path, OPEN_EXISTING));
    ASSERT_TRUE(Lock(first, 0));
    EXPECT_TRUE(Lock(second, LOCKFILE_FAIL_IMMEDIATELY));
    EXPECT_TRUE(Unlock(second));
    EXPECT_FALSE(Lock(second, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY));
    EXPECT_TRUE(Unlock(first));
}

TEST_F(KernelFiles, AWaitingLockIsGrantedWhenTheHolderCloses)
{
    const Text path = In(OLESTR("a.txt"));
    CHandle holder(Open(path, CREATE_NEW));
    ASSERT_TRUE(Lock(holder, LOCKFILE_EXCLUSIVE_LOCK));
    std::atomic<bool> bClosing{false};
    std::thread waiter(
        [&]
        {
            const CHandle file(Open(path, OPEN_EXISTING));
            EXPECT_TRUE(Lock(file, LOCKFILE_EXCLUSIVE_LOCK));
            EXPECT_TRUE(bClosing);
            EXPECT_TRUE(Unlock(file));
        });
    Sleep(50);
    bClosing = true;
    holder.Close();
    waiter.join();
}

TEST(KernelHandles, AnythingButALiveHandleIsRefused)
{
    int nNoHandle = 0;
    for (const HANDLE handle : {HANDLE{nullptr}, HANDLE{INVALID_HANDLE_VALUE}, HANDLE{&nNoHandle}})
    {
        EXPECT_EQ(GetFileSize(handle, nullptr), INVALID_FILE_SIZE);
        EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
        EXPECT_FALSE(ReleaseMutex(handle));
        EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE);
    }
}

TEST(KernelMutex, BelongsToItsThreadUntilReleasedAsOftenAsTaken)
{
    const CHandle mutex(CreateMutexW(nullptr, FALSE, nullptr));
    ASSERT_EQ(WaitForSingleObject(mutex.Get(), INFINITE), WAIT_OBJECT_0);
    ASSERT_EQ(WaitForSingleObject(mutex.Get(), INFINITE), WAIT_OBJECT_0);
    const auto fromAnotherThread = [&](DWORD dwExpected)
    {
        std::thread(
            [&]
            {
                EXPECT_EQ(WaitForSingleObject(mutex.Get(), 0), dwExpected);
                EXPECT_EQ(ReleaseMutex(mutex.Get()), dwExpected == WAIT_OBJECT_0 ? TRUE : FALSE);
                if (dwExpected != WAIT_OBJECT_0)
                {
                    EXPECT_EQ(GetLastError(), ERROR_NOT_OWNER);
                }
            })
            .join();
    };
    fromAnotherThread(WAIT_TIMEOUT);
    EXPECT_TRUE(ReleaseMutex(mutex.Get()));
    fromAnotherThread(WAIT_TIMEOUT);
    EXPECT_TRUE(ReleaseMutex(mutex.Get()));
    fromAnotherThread(WAIT_OBJECT_0);
}

TEST(KernelMutex, IsAbandonedByAThreadThatEnds)
{
    const CHandle mutex(CreateMutexW(nullptr, FALSE, nullptr));
    std::thread([&] { EXPECT_EQ(WaitForSingleObject(mutex.Get(), INFINITE), WAIT_OBJECT_0); }).join();
    EXPECT_EQ(WaitForSingleObject(mutex.Get(), 0), WAIT_ABANDONED) << "told once, and owned all the same";
    EXPECT_TRUE(ReleaseMutex(mutex.Get()));
    EXPECT_EQ(WaitForSingleObject(mutex.Get(), 0), WAIT_OBJECT_0);
    EXPECT_TRUE(ReleaseMutex(mutex.Get()));
}

TEST(KernelMutex, KeepsThreadsApart)
{
    const CHandle mutex(CreateMutexW(nullptr, FALSE, nullptr));
    int nCounter = 0; // no atomic: the mutex is what protects it
    const auto count = [&]
    {
        for (int i = 0; i < 1000; ++i)
        {
            EXPECT_EQ(WaitForSingleObject(mutex.Get(), INFINITE), WAIT_OBJECT_0);
            ++nCounter;
            EXPECT_TRUE(ReleaseMutex(mutex.Get()));
        }
    };
    std::thread first(count);
    std::thread second(count);
    first.join();
    second.join();
    EXPECT_EQ(nCounter, 2000);
}

TEST(KernelPaths, TheCurrentDirectoryFollowsTheSystemDirectory)
{
    WCHAR before[MAX_PATH] = {};
    WCHAR system[MAX_PATH + 1] = {};
    WCHAR after[MAX_PATH] = {};
    ASSERT_NE(GetCurrentDirectoryW(MAX_PATH, before), 0u);
    ASSERT_NE(GetSystemDirectoryW(system, MAX_PATH + 1), 0u);
    ASSERT_TRUE(SetCurrentDirectoryW(system));
    EXPECT_NE(GetCurrentDirectoryW(MAX_PATH, after), 0u);
    EXPECT_TRUE(SetCurrentDirectoryW(before));
    EXPECT_TRUE(Text(after) == system);
}

TEST(KernelPaths, AShortBufferIsToldTheSizeItNeeds)
{
    WCHAR buffer[MAX_PATH] = {};
    const DWORD cchPath = GetCurrentDirectoryW(MAX_PATH, buffer);
    EXPECT_EQ(GetCurrentDirectoryW(cchPath, buffer), cchPath + 1);
    EXPECT_EQ(GetCurrentDirectoryW(cchPath + 1, buffer), cchPath);
}

TEST(KernelPaths, AModulesNameIsCutToTheBuffer)
{
    WCHAR whole[MAX_PATH] = {};
    const DWORD cchPath = GetModuleFileNameW(nullptr, whole, MAX_PATH);
    ASSERT_GT(cchPath, 4u);
    WCHAR cut[5] = {1, 1, 1, 1, 1};
    EXPECT_EQ(GetModuleFileNameW(nullptr, cut, 4), 4u);
    EXPECT_EQ(GetLastError(), ERROR_INSUFFICIENT_BUFFER);
    // Whether the last of the four is a terminator depends on the platform's version.
    EXPECT_TRUE(Text(cut, 3) == Text(whole, 3));
    EXPECT_EQ(cut[4], 1);
}

TEST(KernelModules, AFileThatIsNoneIsToldApartFromAMissingOne)
{
    EXPECT_EQ(LoadLibraryExW(OLESTR("en-US\\no-such-module.dll.mui"), nullptr, 0), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_MOD_NOT_FOUND);
    EXPECT_NE(GetModuleHandleW(nullptr), nullptr);
    EXPECT_EQ(GetProcAddress(GetModuleHandleW(nullptr), "NoSuchFunction"), nullptr);
    EXPECT_EQ(GetLastError(), ERROR_PROC_NOT_FOUND);
}
} // namespace
