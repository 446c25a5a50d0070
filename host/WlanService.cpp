#include "host/WlanService.h"

#include "host/HostError.h"

#include <rpc.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace
{
constexpr CWideView serviceLibrary = OLESTR("wlanapi.dll");
constexpr CWideView simulatedFolder = OLESTR("simulated\\");
constexpr const WCHAR* szFolderVariable = OLESTR("WLAN_SERVICE_DIR");
constexpr DWORD clientVersion = 2;

// A request to the driver begins with a header, which the answer repeats.
constexpr std::size_t cbHeader = 24;
constexpr std::size_t cbRequest = 32;
constexpr std::size_t objectIdentifierOffset = 4;
constexpr std::size_t payloadLengthOffset = 12;

void RequireDone(DWORD dwError, const char* szCall)
{
    if (dwError == ERROR_SERVICE_NOT_ACTIVE)
        throw CHostError("there is no WLAN service; name a simulated one with --service DIR");
    if (dwError != ERROR_SUCCESS)
        throw CHostError(std::string("the WLAN service answered ") + szCall + " with " + ErrorText(dwError));
}

void SetVariable(const WCHAR* szName, const std::string& strPath)
{
    if (!strPath.empty())
        SetEnvironmentVariableW(szName, std::filesystem::absolute(PathOf(strPath)).string<WCHAR>().c_str());
}

// The simulated service is loaded only for who names a service folder. The machine's own has to be named too: the loader would
// look beside the program first.
CWideString LibraryFile()
{
    if (GetEnvironmentVariableW(szFolderVariable, nullptr, 0) != 0)
        return BesideProgram(CWideString(simulatedFolder) + CWideString(serviceLibrary));
    return InSystemFolder(serviceLibrary);
}

CUniqueLibrary LoadService(const ServiceOptions& options)
{
    SetVariable(szFolderVariable, options.strFolder);
    SetVariable(OLESTR("WLAN_SERVICE_LOG"), options.strLog);
    if (!options.strFolder.empty() && !std::filesystem::is_regular_file(PathOf(options.strFolder) / "adapters.json"))
        throw CHostError(options.strFolder + ": is not a service folder: it has no adapters.json");
    CUniqueLibrary library(LoadLibraryW(LibraryFile().c_str()));
    RequireDone(library ? ERROR_SUCCESS : ERROR_SERVICE_NOT_ACTIVE, "LoadLibrary");
    return library;
}
} // namespace

CWlanService::CWlanService(const ServiceOptions& options)
    : m_library(LoadService(options)), m_pFreeMemory(Export<decltype(&WlanFreeMemory)>(m_library.Get(), "WlanFreeMemory"))
{
    DWORD dwVersion = 0;
    RequireDone(Call<decltype(WlanOpenHandle)>("WlanOpenHandle", clientVersion, nullptr, &dwVersion, &m_hClient),
                "WlanOpenHandle");
}

std::unique_ptr<CWlanService> CWlanService::Open(const ServiceOptions& options, bool bNeeded)
{
    try
    {
        return std::make_unique<CWlanService>(options);
    }
    catch (const CHostError&)
    {
        if (bNeeded)
            throw;
        return nullptr;
    }
}

CWlanService::~CWlanService()
{
    if (m_hClient)
        Call<decltype(WlanCloseHandle)>("WlanCloseHandle", m_hClient, nullptr);
}

std::vector<WlanAdapter> CWlanService::Adapters() const
{
    PWLAN_INTERFACE_INFO_LIST pList = nullptr;
    RequireDone(Call<decltype(WlanEnumInterfaces)>("WlanEnumInterfaces", m_hClient, nullptr, &pList), "WlanEnumInterfaces");
    const auto list = Own(pList);
    std::vector<WlanAdapter> adapters;
    for (DWORD n = 0; n < list->dwNumberOfItems; ++n)
        adapters.push_back({list->InterfaceInfo[n].InterfaceGuid, Utf8Of(list->InterfaceInfo[n].strInterfaceDescription)});
    return adapters;
}

WlanAdapter CWlanService::Adapter(const GUID& guid) const
{
    std::string strKnown;
    for (const WlanAdapter& adapter : Adapters())
    {
        if (IsEqualGUID(adapter.guid, guid))
            return adapter;
        strKnown += (strKnown.empty() ? " " : ", ") + TextOf(adapter.guid) + " (" + adapter.strDescription + ")";
    }
    throw CHostError("there is no adapter " + TextOf(guid) + (strKnown.empty() ? ", nor any other" : "; there are:" + strKnown));
}

std::vector<CWideString> CWlanService::ProfileNames(const GUID& adapter) const
{
    PWLAN_PROFILE_INFO_LIST pList = nullptr;
    RequireDone(Call<decltype(WlanGetProfileList)>("WlanGetProfileList", m_hClient, &adapter, nullptr, &pList),
                "WlanGetProfileList");
    const auto list = Own(pList);
    std::vector<CWideString> names;
    for (DWORD n = 0; n < list->dwNumberOfItems; ++n)
        names.emplace_back(list->ProfileInfo[n].strProfileName);
    return names;
}

std::optional<StoredText> CWlanService::Profile(const GUID& adapter, const CWideString& strName) const
{
    StoredText profile{};
    LPWSTR szText = nullptr;
    DWORD dwAccess = 0;
    const DWORD dwError = Call<decltype(WlanGetProfile)>("WlanGetProfile", m_hClient, &adapter, strName.c_str(), nullptr, &szText,
                                                         &profile.dwFlags, &dwAccess);
    if (dwError == ERROR_NOT_FOUND)
        return std::nullopt;
    RequireDone(dwError, "WlanGetProfile");
    const auto text = Own(szText);
    profile.strText = text.get();
    return profile;
}

void CWlanService::Store(const GUID& adapter, const StoredText& profile) const
{
    DWORD dwReason = 0;
    const DWORD dwError = Call<decltype(WlanSetProfile)>("WlanSetProfile", m_hClient, &adapter, profile.dwFlags,
                                                         profile.strText.c_str(), nullptr, TRUE, nullptr, &dwReason);
    if (dwError == ERROR_BAD_PROFILE)
        throw CHostError("the WLAN service refuses the profile with reason " + std::to_string(dwReason));
    RequireDone(dwError, "WlanSetProfile");
}

std::vector<unsigned> CWlanService::PhyTypes(const GUID& adapter) const
{
    PWLAN_INTERFACE_CAPABILITY pCapability = nullptr;
    RequireDone(
        Call<decltype(WlanGetInterfaceCapability)>("WlanGetInterfaceCapability", m_hClient, &adapter, nullptr, &pCapability),
        "WlanGetInterfaceCapability");
    const auto capability = Own(pCapability);
    std::vector<unsigned> types;
    for (DWORD n = 0; n < capability->dwNumberOfSupportedPhys; ++n)
        types.push_back(static_cast<unsigned>(capability->dot11PhyTypes[n]));
    return types;
}

std::string CWlanService::AskDriver(const GUID& adapter, DWORD dwObjectIdentifier, DWORD cbPayload, std::size_t cbMost) const
{
    std::array<BYTE, cbRequest> request{};
    std::memcpy(request.data() + objectIdentifierOffset, &dwObjectIdentifier, sizeof(dwObjectIdentifier));
    std::memcpy(request.data() + payloadLengthOffset, &cbPayload, sizeof(cbPayload));
    std::string strReply(cbHeader + cbMost, '\0');
    DWORD cbReturned = 0;
    // A driver that does not know the query is no failure: it has no answer.
    Call<decltype(WlanIhvControl)>("WlanIhvControl", m_hClient, &adapter, wlan_ihv_control_type_driver,
                                   static_cast<DWORD>(request.size()), request.data(), static_cast<DWORD>(strReply.size()),
                                   strReply.data(), &cbReturned);
    const std::size_t cbValid = std::min<std::size_t>(cbReturned, strReply.size());
    return cbValid > cbHeader ? strReply.substr(cbHeader, cbValid - cbHeader) : std::string();
}

std::optional<GUID> GuidOf(const std::string& strText)
{
    const bool bBraces = strText.size() > 2 && strText.front() == '{' && strText.back() == '}';
    CWideString strGuid = WideOf(bBraces ? strText.substr(1, strText.size() - 2) : strText);
    constexpr std::size_t cchGuid = 36;
    GUID guid{};
    if (strGuid.size() != cchGuid || UuidFromStringW(reinterpret_cast<RPC_WSTR>(strGuid.data()), &guid) != RPC_S_OK)
        return std::nullopt;
    return guid;
}

std::string TextOf(const GUID& guid)
{
    UUID uuid = guid;
    RPC_WSTR szText = nullptr;
    if (UuidToStringW(&uuid, &szText) != RPC_S_OK)
        throw std::bad_alloc();
    const std::string strText = Utf8Of(reinterpret_cast<const WCHAR*>(szText));
    RpcStringFreeW(&szText);
    return strText;
}
