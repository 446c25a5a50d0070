#include "extui/BandChoice.h"

#include "profile/WlanProfileBands.h"
#include "public/ConnectionContext.h"
#include "resources/resource.h"
#include "wlan/WirelessProfile.h"

#include <memory>

namespace
{
// Filled whenever a dialog learns them; they outlive the dialog.
PhyCapabilities phyCapabilities = {};

struct BandControl
{
    int nId;
    WlanProfileBands band;
    DWORD PhyCapabilities::*pCapability;
};
constexpr BandControl bandControls[] = {
    {IDC_BAND_5_GHZ, bands5GHz, &PhyCapabilities::ofdm},
    {IDC_BAND_2_4_GHZ, bands24GHz, &PhyCapabilities::erp},
};

// The wireless profile's text, owned the way the profile operations exchange it.
class CWirelessProfileText
{
public:
    explicit CWirelessProfileText(const void* pConnectionContext) : m_bRead(GetWirelessProfile(pConnectionContext, &m_szText))
    {
    }
    ~CWirelessProfileText()
    {
        delete[] m_szText;
    }
    CWirelessProfileText(const CWirelessProfileText&) = delete;
    CWirelessProfileText& operator=(const CWirelessProfileText&) = delete;

    bool IsRead() const
    {
        return m_bRead;
    }
    const WCHAR* Get() const
    {
        return m_szText;
    }
    WCHAR** Put()
    {
        return &m_szText;
    }

private:
    WCHAR* m_szText = nullptr;
    bool m_bRead;
};

WlanProfileBands ReadBands(const void* pConnectionContext)
{
    auto bands = bandsNotRead;
    const CWirelessProfileText profile(pConnectionContext);
    if (profile.IsRead())
        ReadProfileBands(profile.Get(), &bands);
    return bands == bandsNotRead ? bandsBoth : bands;
}
} // namespace

void ShowBands(HWND hwndDialog, const void* pConnectionContext)
{
    const WlanProfileBands bands = ReadBands(pConnectionContext);
    if (!pConnectionContext ||
        !GetPhyCapabilities(CConnectionContextReader(pConnectionContext).InterfaceGuid(), &phyCapabilities))
        return;
    const auto isCapable = [](const BandControl& control) { return phyCapabilities.*control.pCapability != 0; };
    for (const auto& control : bandControls)
        EnableWindow(GetDlgItem(hwndDialog, control.nId), isCapable(control));
    for (const auto& control : bandControls)
    {
        const bool bChecked = isCapable(control) && (bands & control.band) != 0;
        CheckDlgButton(hwndDialog, control.nId, bChecked ? BST_CHECKED : BST_UNCHECKED);
    }
}

bool IsAnyBandChecked(HWND hwndDialog)
{
    for (const auto& control : bandControls)
    {
        if (IsDlgButtonChecked(hwndDialog, control.nId) == BST_CHECKED)
            return true;
    }
    return false;
}

void StoreBands(HWND hwndDialog, const void* pConnectionContext)
{
    DWORD dwBands = bandsNotRead;
    for (const auto& control : bandControls)
    {
        if (IsDlgButtonChecked(hwndDialog, control.nId) == BST_CHECKED)
            dwBands |= control.band;
    }
    CWirelessProfileText profile(pConnectionContext);
    if (profile.IsRead() && WriteProfileBands(profile.Put(), static_cast<WlanProfileBands>(dwBands)))
        SetWirelessProfile(pConnectionContext, profile.Get());
}
