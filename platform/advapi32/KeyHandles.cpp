#include "platform/advapi32/KeyHandles.h"

#include "platform/testing/Accounts.h"

#include <array>
#include <mutex>
#include <unordered_map>
#include <utility>

namespace platform::registry
{
namespace
{
struct HandleTable
{
    std::mutex lock;
    std::unordered_map<HKEY, OpenKey> keys;
    ULONG_PTR next = 0x100;
};

// Never destroyed: modules that are unloaded at the end of the process may still close keys.
HandleTable& Table()
{
    static HandleTable* const pTable = new HandleTable;
    return *pTable;
}

struct PredefinedKey
{
    HKEY hKey;
    Path path;
};

// The user's own classes are not merged in: the classes root is the machine's.
const std::array<PredefinedKey, 3>& PredefinedKeys()
{
    static const auto& keys = *new std::array<PredefinedKey, 3>{{
        {HKEY_CLASSES_ROOT, {u"HKEY_LOCAL_MACHINE", FoldName(u"Software"), FoldName(u"Classes")}},
        {HKEY_CURRENT_USER, {u"HKEY_CURRENT_USER"}},
        {HKEY_LOCAL_MACHINE, {u"HKEY_LOCAL_MACHINE"}},
    }};
    return keys;
}

const PredefinedKey* FindPredefined(HKEY hKey)
{
    for (const auto& predefined : PredefinedKeys())
    {
        if (predefined.hKey == hKey)
            return &predefined;
    }
    return nullptr;
}
} // namespace

HKEY AddHandle(Path path, REGSAM samDesired)
{
    HandleTable& table = Table();
    const std::scoped_lock guard(table.lock);
    const HKEY hKey = reinterpret_cast<HKEY>(table.next);
    table.keys.emplace(hKey, OpenKey{std::move(path), samDesired, false, false});
    table.next += 4;
    testing::ChangeAccount(testing::Account::RegistryKey, 1);
    return hKey;
}

std::optional<OpenKey> FindHandle(HKEY hKey)
{
    if (const auto* const pPredefined = FindPredefined(hKey))
    {
        OpenKey key{{}, 0, true, false};
        key.path = pPredefined->path;
        return key;
    }
    HandleTable& table = Table();
    const std::scoped_lock guard(table.lock);
    const auto found = table.keys.find(hKey);
    return found == table.keys.end() ? std::nullopt : std::optional(found->second);
}

bool CloseHandleOfKey(HKEY hKey)
{
    if (FindPredefined(hKey))
        return true;
    HandleTable& table = Table();
    const std::scoped_lock guard(table.lock);
    if (table.keys.erase(hKey) == 0)
        return false;
    testing::ChangeAccount(testing::Account::RegistryKey, -1);
    return true;
}

void MarkHandlesDeleted(const Path& path)
{
    HandleTable& table = Table();
    const std::scoped_lock guard(table.lock);
    for (auto& [hKey, key] : table.keys)
    {
        if (key.path == path)
            key.bDeleted = true;
    }
}
} // namespace platform::registry
