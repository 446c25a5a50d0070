#include "wlan/SelectedInterface.h"

#include "wlan/WlanAdapterList.h"

#include <algorithm>

#include <rpc.h>

namespace
{
constexpr std::size_t cchGuidText = 37;

GUID selectedGuid = {};

bool IsListed(const CWlanAdapterList& adapters, CWideView guid)
{
    for (LONG i = 0; i < adapters.GetCount(); ++i)
    {
        if (guid == adapters.GetGuidString(i))
            return true;
    }
    return false;
}
} // namespace

LONG SelectIhvInterface(const WCHAR* szGuid)
{
    const CWlanAdapterList adapters;
    const CWideView guid(szGuid ? szGuid : OLESTR(""));
    if (!IsListed(adapters, guid))
        return -1;
    WCHAR szText[cchGuidText] = {};
    std::copy(guid.begin(), guid.end(), szText);
    return UuidFromStringW(reinterpret_cast<RPC_WSTR>(szText), &selectedGuid) == RPC_S_OK ? 0 : -2;
}

const GUID& SelectedInterfaceGuid()
{
    return selectedGuid;
}
