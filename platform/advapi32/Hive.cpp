#include "platform/advapi32/Hive.h"

#include "platform/advapi32/AccessRights.h"
#include "platform/kernel32/Descriptor.h"
#include "platform/kernel32/Paths.h"
#include "platform/kernel32/Unicode.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace platform::registry
{
namespace
{
namespace fs = std::filesystem;

struct Cache
{
    std::mutex turn;
    Json root;        // null when nothing is known; its "keys" are what the file holds
    CDescriptor file; // what was read, none for a missing file: held open, so that no other file gets its number
    struct stat status = {};
};

// Never destroyed: modules that are unloaded at the end of the process may still use the registry.
Cache& TheCache()
{
    static Cache* const pCache = new Cache;
    return *pCache;
}

// Longer than any number of writers takes that take turns.
constexpr auto longestWait = std::chrono::seconds(15);

// A link is followed, so that what it leads to is replaced and not the link.
fs::path HivePath()
{
    const fs::path path = RootFolder() / "registry.json";
    std::error_code ignored;
    const fs::path real = fs::canonical(path, ignored);
    return real.empty() ? path : real;
}

// Nothing but a file: opening a pipe would wait for its other end. -1 when there is nothing of the name.
CDescriptor OpenState(const fs::path& path, int nFlags)
{
    CDescriptor file(open(path.c_str(), nFlags | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666));
    Require(file.Get() >= 0 || errno == ENOENT, ERROR_REGISTRY_IO_FAILED);
    struct stat status = {};
    Require(file.Get() < 0 || (fstat(file.Get(), &status) == 0 && S_ISREG(status.st_mode)), ERROR_REGISTRY_IO_FAILED);
    return file;
}

bool IsValue(const Json& json)
{
    if (json.is_string() || (json.is_number_unsigned() && json.get<std::uint64_t>() <= UINT32_MAX))
        return true;
    return json.is_object() && json.size() == 2 && json.contains("type") && json["type"].is_number_unsigned() &&
           json.contains("bytes") && json["bytes"].is_array();
}

// Throws for what is no key: a slip of the pen must not look like a registry without that key or value.
void CheckKey(const Json& key)
{
    Require(key.is_object(), ERROR_BADDB);
    for (const auto& [part, members] : key.items())
    {
        Require((part == "keys" || part == "values") && members.is_object(), ERROR_BADDB);
        for (const auto& member : members)
            part == "keys" ? CheckKey(member) : Require(IsValue(member), ERROR_BADDB);
    }
}

// As deep as the platform has keys. Each takes two levels of the file, and a value that is a list of bytes three more.
constexpr std::size_t mostKeysDeep = 512;
constexpr int mostLevels = 2 * static_cast<int>(mostKeysDeep) + 3;

bool IsShallow(int nLevel, Json::parse_event_t, const Json&)
{
    Require(nLevel <= mostLevels, ERROR_BADDB);
    return true;
}

Json ParseHive(int fd, off_t cbFile)
{
    std::string text(static_cast<std::size_t>(cbFile), '\0');
    Require(pread(fd, text.data(), text.size(), 0) == cbFile, ERROR_REGISTRY_IO_FAILED);
    Json root;
    root["keys"] = Json::parse(text, IsShallow, false);
    CheckKey(root);
    return root;
}

bool IsSameFile(const struct stat& left, const struct stat& right)
{
    return left.st_dev == right.st_dev && left.st_ino == right.st_ino && left.st_size == right.st_size &&
           left.st_mtim.tv_sec == right.st_mtim.tv_sec && left.st_mtim.tv_nsec == right.st_mtim.tv_nsec;
}

bool WriteAll(int fd, std::string_view text)
{
    while (!text.empty())
    {
        const ssize_t cbWritten = write(fd, text.data(), text.size());
        if (cbWritten < 0 && errno != EINTR)
            return false;
        text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(cbWritten, 0)));
    }
    return true;
}

// Readers without a lock see the old file or the new one, never half of it.
void ReplaceHive(const std::string& text)
{
    const fs::path path = HivePath();
    const fs::path fresh = path.native() + ".new";
    const CDescriptor old = OpenState(path, O_RDONLY);
    // What a killed writer left, or a link that somebody put there, is not written into.
    unlink(fresh.c_str());
    const CDescriptor file(open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, old.Get() < 0 ? 0666 : 0600));
    Require(file.Get() >= 0, ERROR_REGISTRY_IO_FAILED);
    // Whoever could not read the old one cannot read the new one either.
    if ((old.Get() < 0 || CopyRights(old.Get(), file.Get())) && WriteAll(file.Get(), text) &&
        rename(fresh.c_str(), path.c_str()) == 0)
        return;
    unlink(fresh.c_str());
    throw Failure{ERROR_REGISTRY_IO_FAILED};
}
} // namespace

// Each has a descriptor of its own: locks belong to the open file, and a forked process would share it.
class CHive::CWriterLock
{
public:
    // Whoever may open the file can hold it: who waits in vain has to hear of it. Throws ERROR_LOCK_VIOLATION then.
    CWriterLock() : m_file(OpenState(RootFolder() / "registry.lock", O_RDWR | O_CREAT | O_NOFOLLOW))
    {
        const auto latest = std::chrono::steady_clock::now() + longestWait;
        while (flock(m_file.Get(), LOCK_EX | LOCK_NB) != 0)
        {
            Require(errno == EWOULDBLOCK || errno == EINTR, ERROR_REGISTRY_IO_FAILED);
            if (std::chrono::steady_clock::now() > latest)
            {
                std::fprintf(stderr, "the registry cannot be written: another process holds %s\n",
                             (RootFolder() / "registry.lock").c_str());
                throw Failure{ERROR_LOCK_VIOLATION};
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
    }

private:
    CDescriptor m_file;
};

CHive::CHive(Mode mode)
    : m_turn(TheCache().turn), m_bDirty(mode == Mode::Write), m_writerLock(m_bDirty ? std::make_unique<CWriterLock>() : nullptr)
{
    Cache& cache = TheCache();
    struct stat status = {};
    const bool bExists = stat(HivePath().c_str(), &status) == 0;
    Require(bExists || errno == ENOENT, ERROR_REGISTRY_IO_FAILED);
    if (!cache.root.is_null() && bExists == (cache.file.Get() >= 0) && IsSameFile(status, cache.status))
        return;
    cache.root = nullptr;
    cache.file = bExists ? OpenState(HivePath(), O_RDONLY) : CDescriptor();
    if (bExists)
        Require(fstat(cache.file.Get(), &status) == 0, ERROR_REGISTRY_IO_FAILED);
    Json root = bExists ? ParseHive(cache.file.Get(), status.st_size) : Json{{"keys", Json::object()}};
    cache.root = std::move(root);
    cache.status = status;
    // What every machine has, whatever a person took out of the file.
    EnsureKey({u"HKEY_CURRENT_USER", u"Software"});
    EnsureKey({u"HKEY_LOCAL_MACHINE", u"Software", u"Classes", u"CLSID"});
}

CHive::~CHive()
{
    if (m_bDirty)
        TheCache().root = nullptr;
}

Json* CHive::FindKey(const Path& path) const
{
    Json* pKey = &TheCache().root;
    for (const auto& name : path)
    {
        pKey = FindMember(*pKey, "keys", name);
        if (!pKey)
            break;
    }
    return pKey;
}

bool CHive::EnsureKey(const std::vector<std::u16string>& names) const
{
    Require(names.size() <= mostKeysDeep, ERROR_INVALID_PARAMETER);
    bool bAdded = false;
    Json* pKey = &TheCache().root;
    for (const auto& name : names)
    {
        Json* const pFound = FindMember(*pKey, "keys", name);
        bAdded = bAdded || !pFound;
        pKey = pFound ? pFound : &((*pKey)["keys"][ToUtf8(name)] = Json::object());
    }
    return bAdded;
}

void CHive::Save()
{
    Cache& cache = TheCache();
    ReplaceHive(cache.root["keys"].dump(2) + '\n');
    cache.file = OpenState(HivePath(), O_RDONLY);
    Require(fstat(cache.file.Get(), &cache.status) == 0, ERROR_REGISTRY_IO_FAILED);
    m_bDirty = false;
}

Json* FindMember(Json& key, const char* szPart, std::u16string_view name)
{
    const auto part = key.find(szPart);
    if (part == key.end())
        return nullptr;
    for (const auto& [memberName, member] : part->items())
    {
        if (std::ranges::equal(FromUtf8(memberName), name, {}, UpperOf, UpperOf))
            return &member;
    }
    return nullptr;
}

bool EraseMember(Json& key, const char* szPart, std::u16string_view name)
{
    const Json* const pMember = FindMember(key, szPart, name);
    if (!pMember)
        return false;
    Json& members = key[szPart];
    for (auto it = members.begin(); it != members.end(); ++it)
    {
        if (&*it == pMember)
        {
            members.erase(it);
            break;
        }
    }
    return true;
}
} // namespace platform::registry
