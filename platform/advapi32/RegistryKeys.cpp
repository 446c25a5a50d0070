// Opening, creating, deleting, listing and closing keys.
#include "platform/advapi32/Operation.h"

#include <algorithm>
#include <iterator>

using namespace platform::registry;

namespace
{
// The one right that deleting a key takes; it is looked for on the key itself, whatever its handle was opened for.
constexpr REGSAM samDelete = 0x10000;

// Adds what is missing of the path; creating takes the right on the key below which the first one is added. The
// platform looks at that key's own rights, not at what its handle was opened for.
LSTATUS CreateMissing(const std::vector<std::u16string>& names, Target& target, bool& bCreated)
{
    const auto isStorable = [](const std::u16string& name) { return IsStorableName(name, maxKeyNameLength); };
    if (!std::ranges::all_of(names, isStorable) || target.path.size() + names.size() > maxDepth)
        return ERROR_INVALID_PARAMETER;
    for (const auto& name : names)
    {
        target.path.push_back(FoldName(name));
        Place next = Descend(target.place, target.path.back());
        if (!next.pKey)
        {
            if (!(target.place.samGranted & KEY_CREATE_SUB_KEY))
                return ERROR_ACCESS_DENIED;
            next = {&EnsureKey(*target.place.pKey, name), target.place.samGranted};
            bCreated = true;
        }
        target.place = next;
    }
    return ERROR_SUCCESS;
}
} // namespace

LSTATUS WINAPI RegOpenKeyExW(HKEY hKey, LPCWSTR szSubKey, DWORD dwOptions, REGSAM samDesired, PHKEY phkResult)
{
    return Operate("RegOpenKeyExW",
                   [&]() -> LSTATUS
                   {
                       if (!phkResult || dwOptions != 0)
                           return ERROR_INVALID_PARAMETER;
                       CHiveSession session(CHiveSession::Mode::Read);
                       Target target;
                       if (const LSTATUS lStatus = FindTarget(hKey, session, target))
                           return lStatus;
                       if (const LSTATUS lStatus = FindSubKey(szSubKey, target))
                           return lStatus;
                       if (samDesired & ~target.place.samGranted)
                           return ERROR_ACCESS_DENIED;
                       *phkResult = AddHandle(std::move(target.path), samDesired);
                       return ERROR_SUCCESS;
                   });
}

LSTATUS WINAPI RegCreateKeyExW(HKEY hKey, LPCWSTR szSubKey, DWORD dwReserved, LPWSTR szClass, DWORD dwOptions, REGSAM samDesired,
                               SECURITY_ATTRIBUTES* pAttributes, PHKEY phkResult, LPDWORD pdwDisposition)
{
    return Operate("RegCreateKeyExW",
                   [&]() -> LSTATUS
                   {
                       if (!phkResult || !szSubKey || dwReserved != 0)
                           return ERROR_INVALID_PARAMETER;
                       // Classes, volatile keys and security descriptors are not kept here.
                       if ((szClass && *szClass) || dwOptions != REG_OPTION_NON_VOLATILE ||
                           (pAttributes && pAttributes->lpSecurityDescriptor))
                           return ERROR_CALL_NOT_IMPLEMENTED;
                       CHiveSession session(CHiveSession::Mode::Write);
                       Target target;
                       if (const LSTATUS lStatus = FindTarget(hKey, session, target))
                           return lStatus;
                       const auto names = SplitSubKey(szSubKey);
                       if (!names)
                           return ERROR_BAD_PATHNAME;
                       bool bCreated = false;
                       if (const LSTATUS lStatus = CreateMissing(*names, target, bCreated))
                           return lStatus;
                       if (samDesired & ~target.place.samGranted)
                           return ERROR_ACCESS_DENIED;
                       if (bCreated)
                           session.Save();
                       *phkResult = AddHandle(std::move(target.path), samDesired);
                       if (pdwDisposition)
                           *pdwDisposition = bCreated ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
                       return ERROR_SUCCESS;
                   });
}

LSTATUS WINAPI RegDeleteKeyW(HKEY hKey, LPCWSTR szSubKey)
{
    return Operate("RegDeleteKeyW",
                   [&]() -> LSTATUS
                   {
                       if (!szSubKey)
                           return ERROR_INVALID_PARAMETER;
                       CHiveSession session(CHiveSession::Mode::Write);
                       Target target;
                       if (const LSTATUS lStatus = FindTarget(hKey, session, target))
                           return lStatus;
                       if (const LSTATUS lStatus = FindSubKey(szSubKey, target))
                           return lStatus;
                       const bool bRootKey = target.path.size() == 1;
                       if (bRootKey || !target.place.pKey->keys.empty() || !(target.place.samGranted & samDelete))
                           return ERROR_ACCESS_DENIED;
                       const Path parent(target.path.begin(), std::prev(target.path.end()));
                       Locate(session.Root(), parent).pKey->keys.erase(target.path.back());
                       session.Save();
                       MarkHandlesDeleted(target.path);
                       return ERROR_SUCCESS;
                   });
}

LSTATUS WINAPI RegEnumKeyExW(HKEY hKey, DWORD dwIndex, LPWSTR szName, LPDWORD pcchName, LPDWORD pdwReserved, LPWSTR szClass,
                             LPDWORD pcchClass, void* pftLastWriteTime)
{
    return Operate("RegEnumKeyExW",
                   [&]() -> LSTATUS
                   {
                       if (!szName || !pcchName || pdwReserved)
                           return ERROR_INVALID_PARAMETER;
                       if (szClass || pcchClass || pftLastWriteTime) // none of these is kept here
                           return ERROR_CALL_NOT_IMPLEMENTED;
                       CHiveSession session(CHiveSession::Mode::Read);
                       Target target;
                       if (const LSTATUS lStatus = FindTarget(hKey, session, target))
                           return lStatus;
                       if (!(target.samHandle & KEY_ENUMERATE_SUB_KEYS))
                           return ERROR_ACCESS_DENIED;
                       const auto& keys = target.place.pKey->keys;
                       if (dwIndex >= keys.size())
                           return ERROR_NO_MORE_ITEMS;
                       const std::u16string& name = std::next(keys.begin(), static_cast<std::ptrdiff_t>(dwIndex))->second->name;
                       if (*pcchName <= name.size())
                           return ERROR_MORE_DATA;
                       std::copy_n(name.c_str(), name.size() + 1, szName);
                       *pcchName = static_cast<DWORD>(name.size());
                       return ERROR_SUCCESS;
                   });
}

LSTATUS WINAPI RegCloseKey(HKEY hKey)
{
    // A close that is made to fail gives the handle up all the same, so that the account of open keys shows only what
    // the caller forgot.
    const bool bClosed = CloseHandleOfKey(hKey);
    return Operate("RegCloseKey", [&]() -> LSTATUS { return bClosed ? ERROR_SUCCESS : ERROR_INVALID_HANDLE; });
}
