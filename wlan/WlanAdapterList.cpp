#include "wlan/WlanAdapterList.h"

#include "values/Unique.h"
#include "wlan/WlanMemory.h"

#include <rpc.h>

namespace
{
struct CRpcStringCloser
{
    using Handle = RPC_WSTR;
    static RPC_WSTR Empty()
    {
        return nullptr;
    }
    static void Close(RPC_WSTR szText)
    {
        RpcStringFreeW(&szText);
    }
};
} // namespace

CWlanAdapterList::CWlanAdapterList()
{
    if (m_dwLastError != ERROR_SUCCESS)
        return;
    CUniqueWlanMemory<WLAN_INTERFACE_INFO_LIST> interfaces;
    m_dwLastError = WlanEnumInterfaces(m_hClient, nullptr, interfaces.Put());
    if (m_dwLastError != ERROR_SUCCESS || !interfaces)
        return;
    for (DWORD i = 0; i < interfaces.Get()->dwNumberOfItems; ++i)
    {
        CUnique<CRpcStringCloser> szGuid;
        UUID guid = interfaces.Get()->InterfaceInfo[i].InterfaceGuid;
        if (UuidToStringW(&guid, szGuid.Put()) == RPC_S_OK)
            m_guidTexts.emplace_back(reinterpret_cast<const WCHAR*>(szGuid.Get()));
    }
}

LONG CWlanAdapterList::GetCount() const
{
    return static_cast<LONG>(m_guidTexts.size());
}

const WCHAR* CWlanAdapterList::GetGuidString(LONG lIndex) const
{
    return lIndex >= 0 && lIndex < GetCount() ? m_guidTexts[static_cast<std::size_t>(lIndex)].c_str() : nullptr;
}
