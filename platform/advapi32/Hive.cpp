#include "platform/advapi32/Hive.h"

#include "platform/kernel32/Descriptor.h"
#include "platform/kernel32/Paths.h"
#include "platform/kernel32/Unicode.h"

#include <algorithm>
#include <cerrno>
#include <fstream>

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

fs::path HivePath()
{
    return RootFolder() / "registry.json";
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

// Readers without a lock see the old file or the new one, never half of it.
void ReplaceHive(const std::string& text)
{
    const fs::path path = HivePath();
    const fs::path fresh = path.native() + ".new";
    std::ofstream file(fresh, std::ios::binary | std::ios::trunc);
    struct stat old = {};
    std::error_code failure;
    if (stat(path.c_str(), &old) == 0)
    {
        // Whoever could not read the old one cannot read the new one either. The owner stays as far as this user may.
        [[maybe_unused]] const int nIgnored = chown(fresh.c_str(), old.st_uid, old.st_gid);
        Require(chmod(fresh.c_str(), old.st_mode) == 0, ERROR_REGISTRY_IO_FAILED);
    }
    file << text;
    file.close();
    if (file)
        fs::rename(fresh, path, failure);
    Require(file && !failure, ERROR_REGISTRY_IO_FAILED);
}
} // namespace

// Each has a descriptor of its own: locks belong to the open file, and a forked process would share it.
class CHive::CWriterLock
{
public:
    CWriterLock() : m_file(open((RootFolder() / "registry.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666))
    {
        int nResult = 0;
        do
        {
            nResult = flock(m_file.Get(), LOCK_EX);
        } while (nResult != 0 && errno == EINTR);
        Require(nResult == 0, ERROR_REGISTRY_IO_FAILED);
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
    cache.file = CDescriptor(bExists ? open(HivePath().c_str(), O_RDONLY | O_CLOEXEC) : -1);
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
    cache.file = CDescriptor(open(HivePath().c_str(), O_RDONLY | O_CLOEXEC));
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
