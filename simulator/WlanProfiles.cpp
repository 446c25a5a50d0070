// The exported functions about wireless profiles.
#include "simulator/Adapters.h"
#include "simulator/Calls.h"
#include "simulator/Clients.h"
#include "simulator/ProfileStore.h"
#include "simulator/ReasonCodes.h"
#include "simulator/ServiceFolder.h"

#include <windows.h>

#include <wlanapi.h>

#include <algorithm>
#include <cstddef>
#include <cstring>

using namespace simulator;

namespace
{
// Read, execute and write: the service knows one user, who may do everything.
constexpr DWORD fullAccess = 0x70023;

// The store of an adapter, locked for one operation.
class CLockedStore
{
public:
    CLockedStore(const GUID& guid, CServiceLock::Access access)
        : m_folder(ServiceFolder()), m_lock(m_folder, access), m_guid(FindAdapter(m_folder, guid).guid), m_store(m_folder, m_guid)
    {
    }
    CProfileStore* operator->()
    {
        return &m_store;
    }

private:
    std::filesystem::path m_folder;
    CServiceLock m_lock;
    GUID m_guid;
    CProfileStore m_store;
};
} // namespace

DWORD WINAPI WlanGetProfileList(HANDLE hClientHandle, const GUID* pInterfaceGuid, PVOID pReserved,
                                PWLAN_PROFILE_INFO_LIST* ppProfileList)
{
    return ServiceCall(
        "WlanGetProfileList", [&](CCallLine& line) { line.Handle(hClientHandle).Interface(pInterfaceGuid); },
        [&](CCallLine& line)
        {
            RequireClient(hClientHandle);
            Require(pInterfaceGuid && ppProfileList && !pReserved);
            const auto profiles = CLockedStore(*pInterfaceGuid, CServiceLock::Access::Read)->All();
            const std::size_t cb = offsetof(WLAN_PROFILE_INFO_LIST, ProfileInfo) + profiles.size() * sizeof(WLAN_PROFILE_INFO);
            auto* pList = static_cast<PWLAN_PROFILE_INFO_LIST>(AllocateBlock(std::max(cb, sizeof(WLAN_PROFILE_INFO_LIST))));
            WLAN_PROFILE_INFO* pInfo = pList->ProfileInfo;
            for (const StoredProfile& profile : profiles)
            {
                // No name is longer than the record's place for it.
                *std::copy(profile.name.begin(), profile.name.end(), pInfo->strProfileName) = WCHAR{};
                pInfo->dwFlags = profile.dwFlags;
                ++pInfo;
            }
            pList->dwNumberOfItems = static_cast<DWORD>(profiles.size());
            *ppProfileList = pList;
            line.Number("items", pList->dwNumberOfItems);
        });
}

DWORD WINAPI WlanGetProfile(HANDLE hClientHandle, const GUID* pInterfaceGuid, LPCWSTR szProfileName, PVOID pReserved,
                            LPWSTR* pszProfileXml, DWORD* pdwFlags, PDWORD pdwGrantedAccess)
{
    return ServiceCall(
        "WlanGetProfile",
        [&](CCallLine& line)
        {
            line.Handle(hClientHandle).Interface(pInterfaceGuid).Name(szProfileName);
            line.Given("flags", pdwFlags).Given("access", pdwGrantedAccess);
        },
        [&](CCallLine& line)
        {
            RequireClient(hClientHandle);
            Require(pInterfaceGuid && szProfileName && pszProfileXml && !pReserved);
            const auto profile = CLockedStore(*pInterfaceGuid, CServiceLock::Access::Read)->Find(szProfileName);
            Require(profile.has_value(), ERROR_NOT_FOUND);
            const std::size_t cb = (profile->text.size() + 1) * sizeof(WCHAR);
            auto* szXml = static_cast<LPWSTR>(AllocateBlock(cb));
            std::memcpy(szXml, profile->text.c_str(), cb);
            *pszProfileXml = szXml;
            if (pdwFlags)
                *pdwFlags = profile->dwFlags;
            if (pdwGrantedAccess)
                *pdwGrantedAccess = fullAccess;
            line.Length("xml", szXml);
        });
}

DWORD WINAPI WlanSetProfile(HANDLE hClientHandle, const GUID* pInterfaceGuid, DWORD dwFlags, LPCWSTR szProfileXml,
                            LPCWSTR szAllUserProfileSecurity, BOOL bOverwrite, PVOID pReserved, DWORD* pdwReasonCode)
{
    return ServiceCall(
        "WlanSetProfile",
        [&](CCallLine& line)
        {
            line.Handle(hClientHandle).Interface(pInterfaceGuid).Hex("flags", dwFlags).Length("xml", szProfileXml);
            line.Length("security", szAllUserProfileSecurity).Number("overwrite", static_cast<DWORD>(bOverwrite));
        },
        [&](CCallLine& line)
        {
            RequireClient(hClientHandle);
            Require(pInterfaceGuid && szProfileXml && pdwReasonCode && !pReserved);
            // There are no users here whose rights a descriptor could rule.
            Require(!szAllUserProfileSecurity, ERROR_NOT_SUPPORTED);
            // Before the lock, so that reading a long text keeps nobody waiting.
            ProfileVerdict verdict = CProfileReader().Read(szProfileXml);
            const auto encodedText = EncodeFile(szProfileXml);
            if (verdict.dwReason == reasonSuccess && !encodedText)
                verdict.dwReason = reasonInvalidProfileSchema;
            if (verdict.dwReason != reasonSuccess)
            {
                line.Hex("reason", verdict.dwReason);
                *pdwReasonCode = verdict.dwReason;
                throw CServiceError(ERROR_BAD_PROFILE);
            }
            line.Name(verdict.name.c_str());
            CLockedStore(*pInterfaceGuid, CServiceLock::Access::Write)
                ->Store(verdict.name, *encodedText, dwFlags, bOverwrite != FALSE);
            *pdwReasonCode = reasonSuccess;
        });
}
