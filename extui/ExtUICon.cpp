#include "extui/ExtUICon.h"

#include "extui/ConnectionSettingsDialog.h"
#include "extui/PropertyBoundary.h"
#include "extui/ResourceText.h"
#include "profile/CCXConnectionSettings.h"
#include "resources/resource.h"
#include "trace/IhvuiTrace.h"

namespace
{
enum class InvalidProfile
{
    TellTheUser,
    StayQuiet,
};

void TellInvalidProfile(HWND hwndParent)
{
    const CResourceText caption(IDS_CONNECTION_SETTINGS);
    MessageBoxW(hwndParent, OLESTR("Current settings are invalid and will be set to defaults."), caption.Get(),
                MB_OK | MB_ICONWARNING);
}

// The record of a profile text, with the defaults where the text is missing or invalid.
CCXConnectionSettings ReadSettings(BSTR bstrIHVProfile, InvalidProfile invalidProfile, HWND hwndParent)
{
    IhvuiTrace(traceLevelInfo, OLESTR("bstrIHVProfile (IN): %s\n"), bstrIHVProfile);
    CCXConnectionSettings settings(bstrIHVProfile);
    if (!bstrIHVProfile)
    {
        IhvuiTrace(traceLevelInfo, OLESTR("--- NULL profile, setting defaults\n"));
        settings.SetDefaults();
    }
    if (!settings.IsValid())
    {
        IhvuiTrace(traceLevelError, OLESTR("*** Error: invalid profile.\n"));
        if (invalidProfile == InvalidProfile::TellTheUser)
            TellInvalidProfile(hwndParent);
        settings.SetDefaults();
    }
    return settings;
}

// Both outputs are written last, so that an operation that fails on the way leaves them as they were.
void HandOut(const CCXConnectionSettings& settings, BOOL bIsModified, BSTR* bstrModifiedIHVProfile, BOOL* pbIsModified)
{
    const BSTR bstrModified = bIsModified ? settings.Serialise() : nullptr;
    *pbIsModified = bIsModified;
    if (!bIsModified)
        return;
    *bstrModifiedIHVProfile = bstrModified;
    IhvuiTrace(traceLevelInfo, OLESTR("bstrModifiedIHVProfile (OUT): %s\n"), bstrModified);
}
} // namespace

HRESULT STDMETHODCALLTYPE CExtUICon::Dot11ExtUIPropertyGetName(BSTR* pbstrName)
{
    // Without the string the name is empty: an entry without a name still opens its dialog.
    const CResourceText name(IDS_CONNECTION_SETTINGS);
    if (!pbstrName)
        return E_POINTER;
    *pbstrName = SysAllocString(name.Get());
    return *pbstrName ? S_OK : E_OUTOFMEMORY;
}

HRESULT STDMETHODCALLTYPE CExtUICon::Dot11ExtUIPropertyShowDialog(HWND hwndParent, BSTR bstrIHVProfile, void* pConnectionContext,
                                                                  BSTR* bstrModifiedIHVProfile, BOOL* pbIsModified)
{
    return AtPropertyBoundary(
        [&]
        {
            // The dialog's header line carries the other operation's name; readers of the log know it by that.
            IhvuiTrace(traceLevelInfo, OLESTR("\nCExtUICon::Dot11ExtUIPropertySetSelected\n"));
            if (!bstrModifiedIHVProfile || !pbIsModified)
                return TraceError(E_INVALIDARG);
            CCXConnectionSettings settings = ReadSettings(bstrIHVProfile, InvalidProfile::TellTheUser, hwndParent);
            settings.connectionContext = pConnectionContext;
            HandOut(settings, RunConnectionSettingsDialog(hwndParent, settings), bstrModifiedIHVProfile, pbIsModified);
            return S_OK;
        });
}

HRESULT STDMETHODCALLTYPE CExtUICon::Dot11ExtUIPropertyGetSelected(BSTR, void*, BOOL*)
{
    return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE CExtUICon::Dot11ExtUIPropertySetSelected(BSTR bstrIHVProfile, void*, BSTR* bstrModifiedIHVProfile,
                                                                   BOOL* pbIsModified)
{
    return AtPropertyBoundary(
        [&]
        {
            if (!bstrModifiedIHVProfile || !pbIsModified)
                return TraceError(E_INVALIDARG);
            HandOut(ReadSettings(bstrIHVProfile, InvalidProfile::StayQuiet, nullptr), TRUE, bstrModifiedIHVProfile, pbIsModified);
            return S_OK;
        });
}

HRESULT STDMETHODCALLTYPE CExtUICon::Dot11ExtUIPropertyHasDialog(BOOL* pf)
{
    if (!pf)
        return E_INVALIDARG;
    *pf = TRUE;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CExtUICon::Dot11ExtUIPropertyGetDisplayInfo(ULONG, BSTR, void*, ULONG*, ULONG*,
                                                                      Dot11ExtUIPropertyEntry**)
{
    return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE CExtUICon::Dot11ExtUIPropertySetDisplayInfo(ULONG, BSTR, void*, Dot11ExtUIPropertyEntry*, BSTR*, BOOL*)
{
    return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE CExtUICon::Dot11ExtUIPropertyGetFlags(ULONG*, ULONG*)
{
    return E_NOTIMPL;
}
