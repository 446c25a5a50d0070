#include "platform/advapi32/HiveSession.h"

#include "platform/advapi32/HiveText.h"
#include "platform/kernel32/Paths.h"

#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform::registry
{
namespace
{
// Which state of the file was read. Size, time and number of a file can all repeat within one tick of the file
// system's clock; the generation, counted up in the lock file by every writer, cannot.
struct FileState
{
    bool bExists = false;
    ino_t number = 0;
    off_t cbSize = 0;
    time_t seconds = 0;
    long nanoseconds = 0;
    std::uint64_t generation = 0;

    bool operator==(const FileState&) const = default;
};

struct Cache
{
    std::mutex turn;
    std::unique_ptr<Key> root;
    FileState state;
};

// Never destroyed: modules that are unloaded at the end of the process may still use the registry.
Cache& TheCache()
{
    static Cache* const pCache = new Cache;
    return *pCache;
}

std::filesystem::path HivePath()
{
    return RootFolder() / "registry.json";
}

// A descriptor of its own for every operation: locks belong to the open file, and a forked process would share it.
int OpenLocked(int operation)
{
    const int fd = open((RootFolder() / "registry.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    while (fd >= 0 && flock(fd, operation) != 0)
    {
        if (errno == EINTR)
            continue;
        close(fd);
        return -1;
    }
    return fd;
}

std::uint64_t ReadGeneration(int lockFile)
{
    std::uint64_t generation = 0;
    return pread(lockFile, &generation, sizeof generation, 0) == sizeof generation ? generation : 0;
}

void CountGeneration(int lockFile)
{
    const std::uint64_t generation = ReadGeneration(lockFile) + 1;
    if (pwrite(lockFile, &generation, sizeof generation, 0) != sizeof generation)
        throw HiveFailure{ERROR_REGISTRY_IO_FAILED};
}

FileState CurrentState(int lockFile)
{
    FileState state;
    state.generation = ReadGeneration(lockFile);
    struct stat status;
    if (stat(HivePath().c_str(), &status) != 0)
    {
        if (errno != ENOENT)
            throw HiveFailure{ERROR_REGISTRY_IO_FAILED};
        return state;
    }
    state.bExists = true;
    state.number = status.st_ino;
    state.cbSize = status.st_size;
    state.seconds = status.st_mtim.tv_sec;
    state.nanoseconds = status.st_mtim.tv_nsec;
    return state;
}

std::unique_ptr<Key> ReadHive()
{
    std::ifstream file(HivePath(), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    if (!file)
        throw HiveFailure{ERROR_REGISTRY_IO_FAILED};
    try
    {
        return ParseHive(text);
    }
    catch (const CMalformedHive&)
    {
        throw HiveFailure{ERROR_BADDB};
    }
}

// Readers without the lock (a person's editor) see the old file or the new one, never half of it.
void ReplaceHive(const std::string& text)
{
    const std::filesystem::path path = HivePath();
    std::filesystem::path fresh = path;
    fresh += ".new";
    std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    std::error_code failure;
    if (file)
        std::filesystem::rename(fresh, path, failure);
    if (!file || failure)
        throw HiveFailure{ERROR_REGISTRY_IO_FAILED};
}
} // namespace

CDescriptor::~CDescriptor()
{
    if (m_fd >= 0)
        close(m_fd);
}

CHiveSession::CHiveSession(Mode mode)
    : m_turn(TheCache().turn), m_lockFile(OpenLocked(mode == Mode::Write ? LOCK_EX : LOCK_SH)), m_bDirty(mode == Mode::Write)
{
    if (m_lockFile.Get() < 0)
        throw HiveFailure{ERROR_REGISTRY_IO_FAILED};
    Cache& cache = TheCache();
    const FileState state = CurrentState(m_lockFile.Get());
    if (cache.root && cache.state == state)
        return;
    cache.root = nullptr;
    cache.root = state.bExists ? ReadHive() : DefaultHive();
    cache.state = state;
}

CHiveSession::~CHiveSession()
{
    if (m_bDirty)
        TheCache().root = nullptr;
}

Key& CHiveSession::Root()
{
    return *TheCache().root;
}

void CHiveSession::Save()
{
    Cache& cache = TheCache();
    const std::string text = WriteHive(*cache.root);
    CountGeneration(m_lockFile.Get());
    ReplaceHive(text);
    cache.state = CurrentState(m_lockFile.Get());
    m_bDirty = false;
}
} // namespace platform::registry
