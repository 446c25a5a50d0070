// Opening, creating, deleting and closing keys, and their handles.
#include "platform/advapi32/RegistryCall.h"
#include "platform/kernel32/Unicode.h"
#include "platform/testing/Accounts.h"

#include <algorithm>
#include <unordered_map>

namespace platform::registry
{
namespace
{
struct OpenKey
{
    Path path;
    REGSAM samDesired;
};

struct HandleTable
{
    std::mutex lock;
    std::unordered_map<HKEY, OpenKey> keys;
    ULONG_PTR next = 0x100; // values are never used twice, so that a closed handle is recognised
};

// Never destroyed: modules that are unloaded at the end of the process may still close keys. The user's own classes are not
// merged in: the classes root is the machine's.
HandleTable& Table()
{
    static HandleTable* const pTable =
        new HandleTable{{},
                        {{HKEY_CLASSES_ROOT, {{u"HKEY_LOCAL_MACHINE", u"Software", u"Classes"}, KEY_ALL_ACCESS}},
                         {HKEY_CURRENT_USER, {{u"HKEY_CURRENT_USER"}, KEY_ALL_ACCESS}},
                         {HKEY_LOCAL_MACHINE, {{u"HKEY_LOCAL_MACHINE"}, KEY_ALL_ACCESS}}}};
    return *pTable;
}

HKEY AddHandle(Path path, REGSAM samDesired)
{
    const std::scoped_lock guard(Table().lock);
    const HKEY hKey = reinterpret_cast<HKEY>(Table().next);
    Table().keys.emplace(hKey, OpenKey{std::move(path), samDesired});
    Table().next += 4;
    testing::ChangeAccount(testing::Account::RegistryKey, 1);
    return hKey;
}

// The path with the names of a sub-key's behind it.
Path Below(Path path, LPCWSTR szSubKey)
{
    std::u16string_view rest = szSubKey ? szSubKey : u"";
    while (!rest.empty())
    {
        const auto name = rest.substr(0, rest.find(u'\\'));
        if (!name.empty())
            path.emplace_back(name);
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
    }
    return path;
}
} // namespace

Target FindTarget(const CHive& hive, HKEY hKey)
{
    const std::scoped_lock guard(Table().lock);
    const auto found = Table().keys.find(hKey);
    Require(found != Table().keys.end(), ERROR_INVALID_HANDLE);
    Target target{found->second.path, found->second.samDesired, hive.FindKey(found->second.path)};
    Require(target.pKey, ERROR_KEY_DELETED);
    return target;
}

Target FindSubKey(const CHive& hive, Target target, LPCWSTR szSubKey)
{
    target.path = Below(std::move(target.path), szSubKey);
    target.pKey = hive.FindKey(target.path);
    Require(target.pKey, ERROR_FILE_NOT_FOUND);
    return target;
}
} // namespace platform::registry

using namespace platform::registry;
using platform::Require;

LSTATUS WINAPI RegOpenKeyExW(HKEY hKey, LPCWSTR szSubKey, DWORD dwOptions, REGSAM samDesired, PHKEY phkResult)
{
    return RegistryCall("RegOpenKeyExW",
                        [&]
                        {
                            Require(phkResult && dwOptions == 0, ERROR_INVALID_PARAMETER);
                            const CHive hive(CHive::Mode::Read);
                            *phkResult = AddHandle(FindSubKey(hive, FindTarget(hive, hKey), szSubKey).path, samDesired);
                        });
}

LSTATUS WINAPI RegCreateKeyExW(HKEY hKey, LPCWSTR szSubKey, DWORD dwReserved, LPWSTR szClass, DWORD dwOptions, REGSAM samDesired,
                               SECURITY_ATTRIBUTES* pAttributes, PHKEY phkResult, LPDWORD pdwDisposition)
{
    return RegistryCall("RegCreateKeyExW",
                        [&]
                        {
                            Require(phkResult && szSubKey && dwReserved == 0, ERROR_INVALID_PARAMETER);
                            // Classes, volatile keys, security descriptors and what became of the key serve nobody here.
                            Require(!szClass && dwOptions == REG_OPTION_NON_VOLATILE && !pAttributes && !pdwDisposition,
                                    ERROR_NOT_SUPPORTED);
                            CHive hive(CHive::Mode::Write);
                            Path path = Below(FindTarget(hive, hKey).path, szSubKey);
                            if (hive.EnsureKey(path))
                                hive.Save();
                            *phkResult = AddHandle(std::move(path), samDesired);
                        });
}

LSTATUS WINAPI RegDeleteKeyW(HKEY hKey, LPCWSTR szSubKey)
{
    return RegistryCall("RegDeleteKeyW",
                        [&]
                        {
                            Require(szSubKey, ERROR_INVALID_PARAMETER);
                            CHive hive(CHive::Mode::Write);
                            Target target = FindSubKey(hive, FindTarget(hive, hKey), szSubKey);
                            const auto keys = target.pKey->find("keys");
                            const bool bHasKeys = keys != target.pKey->end() && !keys->empty();
                            Require(target.path.size() > 1 && !bHasKeys, ERROR_ACCESS_DENIED);
                            const std::u16string name = std::move(target.path.back());
                            target.path.pop_back();
                            EraseMember(*hive.FindKey(target.path), "keys", name);
                            hive.Save();
                        });
}

LSTATUS WINAPI RegCloseKey(HKEY hKey)
{
    // A close that is made to fail gives the handle up all the same, so that the account of open keys shows only what
    // the caller forgot.
    bool bClosed = hKey == HKEY_CLASSES_ROOT || hKey == HKEY_CURRENT_USER || hKey == HKEY_LOCAL_MACHINE; // always open
    if (!bClosed)
    {
        const std::scoped_lock guard(Table().lock);
        bClosed = Table().keys.erase(hKey) != 0;
        platform::testing::ChangeAccount(platform::testing::Account::RegistryKey, bClosed ? -1 : 0);
    }
    return RegistryCall("RegCloseKey", [&] { Require(bClosed, ERROR_INVALID_HANDLE); });
}
