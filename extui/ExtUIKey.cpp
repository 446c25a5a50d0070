#include "extui/ExtUIKey.h"

#include "extui/PropertyBoundary.h"
#include "profile/CCXSecuritySettings.h"
#include "trace/IhvuiTrace.h"

#include <algorithm>

namespace
{
// What a profile stands for that names no valid choice.
void SetDefaultsOf(const CCXSecurityPropertyInfo& info, CCXSecuritySettings& settings)
{
    IhvuiTrace(traceLevelError, OLESTR("***invalid profile, setting defaults\n"));
    settings.SetDefaults();
    settings.cipher = FallbackCipher(info);
}

void TraceProfile(const CCXSecurityPropertyInfo& info, BSTR bstrIHVProfile)
{
    IhvuiTrace(traceLevelInfo, OLESTR("auth element: (%xh) %s\n"), info.auth, AuthenticationName(info.auth));
    IhvuiTrace(traceLevelInfo, OLESTR("bstrIHVProfile: %s\n"), bstrIHVProfile);
}

// The index of the cipher among the choices, or else the last one's.
ULONG DefaultSelection(const CCXSecurityPropertyInfo& info, DWORD cipher)
{
    const auto ciphers = CiphersOf(info);
    const auto found = std::find(ciphers.begin(), ciphers.end(), cipher);
    const auto uFound = static_cast<ULONG>(found - ciphers.begin());
    return found == ciphers.end() && uFound != 0 ? uFound - 1 : uFound;
}

// Assigns and tells whether the field was another.
bool AssignIfDifferent(DWORD& field, DWORD value)
{
    if (field == value)
        return false;
    field = value;
    return true;
}
} // namespace

HRESULT STDMETHODCALLTYPE CExtUIKey::Initialize(CCXSecurityPropertyInfo* pInfo)
{
    if (!pInfo)
        return E_INVALIDARG;
    m_pInfo = pInfo;
    auto entries = CPropertyEntries::Make(*pInfo);
    m_bHasEntries = entries != nullptr;
    if (!m_bHasEntries)
        return E_OUTOFMEMORY;
    entries->Keep(std::move(m_entries));
    m_entries = std::move(entries);
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CExtUIKey::Dot11ExtUIPropertyGetName(BSTR* pbstrName)
{
    if (!m_pInfo)
        return E_FAIL;
    const WCHAR* szName = FindAuthenticationName(m_pInfo->auth);
    if (!szName)
        return E_FAIL;
    if (!pbstrName)
        return E_POINTER;
    *pbstrName = SysAllocString(szName);
    return *pbstrName ? S_OK : E_OUTOFMEMORY;
}

HRESULT STDMETHODCALLTYPE CExtUIKey::Dot11ExtUIPropertyShowDialog(HWND, BSTR, void*, BSTR*, BOOL*)
{
    return E_NOTIMPL;
}

HRESULT STDMETHODCALLTYPE CExtUIKey::Dot11ExtUIPropertyGetSelected(BSTR bstrIHVProfile, void*, BOOL* pfIsSelected)
{
    return AtPropertyBoundary(
        [&]
        {
            IhvuiTrace(traceLevelInfo, OLESTR("\nCExtUIKey::Dot11ExtUIPropertyGetSelected\n"));
            if (!pfIsSelected)
                return TraceError(E_INVALIDARG);
            if (!m_pInfo)
                return TraceError(E_FAIL);
            TraceProfile(*m_pInfo, bstrIHVProfile);

            CCXSecuritySettings settings(bstrIHVProfile);
            if (!settings.IsValid())
                SetDefaultsOf(*m_pInfo, settings);
            *pfIsSelected = settings.auth == m_pInfo->auth ? TRUE : FALSE;
            IhvuiTrace(traceLevelInfo, OLESTR("*pfIsSelected: %s\n"), BoolText(*pfIsSelected));
            return S_OK;
        });
}

HRESULT STDMETHODCALLTYPE CExtUIKey::Dot11ExtUIPropertySetSelected(BSTR bstrIHVProfile, void*, BSTR* bstrModifiedIHVProfile,
                                                                   BOOL* pbIsModified)
{
    return AtPropertyBoundary(
        [&]
        {
            IhvuiTrace(traceLevelInfo, OLESTR("\nCExtUIKey::Dot11ExtUIPropertySetSelected\n"));
            if (!bstrModifiedIHVProfile || !pbIsModified)
                return TraceError(E_INVALIDARG);
            if (!m_pInfo)
                return TraceError(E_FAIL);
            TraceProfile(*m_pInfo, bstrIHVProfile);

            CCXSecuritySettings settings(bstrIHVProfile);
            bool bChanged = AssignIfDifferent(settings.auth, m_pInfo->auth);
            if (!settings.IsValid())
            {
                settings.cipher = FallbackCipher(*m_pInfo);
                bChanged = true;
            }
            // Only ever set here, never cleared: what the caller passed in counts as well. Both outputs are written last,
            // so that an operation that fails on the way leaves them as they were.
            const BOOL bIsModified = bChanged ? TRUE : *pbIsModified;
            if (bIsModified)
                *bstrModifiedIHVProfile = settings.Serialise();
            *pbIsModified = bIsModified;

            IhvuiTrace(traceLevelInfo, OLESTR("*pbIsModified: %s\n"), BoolText(bIsModified));
            if (bIsModified)
                IhvuiTrace(traceLevelInfo, OLESTR("*bstrModifiedIHVProfile: %s\n"), *bstrModifiedIHVProfile);
            return S_OK;
        });
}

HRESULT STDMETHODCALLTYPE CExtUIKey::Dot11ExtUIPropertyHasDialog(BOOL* pf)
{
    if (!m_pInfo)
        return E_FAIL;
    if (!pf)
        return E_INVALIDARG;
    *pf = m_pInfo->bHasDialog;
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CExtUIKey::Dot11ExtUIPropertyGetDisplayInfo(ULONG uDisplayInfoIndex, BSTR bstrIHVProfile,
                                                                      void* pConnectionContext, ULONG* pcEntries,
                                                                      ULONG* puDefaultSelection,
                                                                      Dot11ExtUIPropertyEntry** ppDot11ExtUIProperty)
{
    return AtPropertyBoundary(
        [&]
        {
            IhvuiTrace(traceLevelInfo, OLESTR("\nCExtUIKey::Dot11ExtUIPropertyGetDisplayInfo\n"));
            if (uDisplayInfoIndex != 0)
                return TraceError(E_NOTIMPL);
            if (!m_pInfo)
                return TraceError(E_FAIL);
            IhvuiTrace(traceLevelInfo, OLESTR("auth element: (%Xh) %s\n"), m_pInfo->auth, AuthenticationName(m_pInfo->auth));
            IhvuiTrace(traceLevelInfo, OLESTR("bstrIHVProfile: %s\n"), bstrIHVProfile);

            CCXSecuritySettings settings(bstrIHVProfile);
            IhvuiTrace(traceLevelInfo, OLESTR("profile cipher: (%Xh) %s\n"), settings.cipher, CipherName(settings.cipher, false));
            if (!settings.IsValid())
                SetDefaultsOf(*m_pInfo, settings);

            if (ppDot11ExtUIProperty)
            {
                *ppDot11ExtUIProperty = m_bHasEntries ? m_entries->First() : nullptr;
                IhvuiTrace(traceLevelInfo, OLESTR("Set *ppDot11ExtUIProperty to %p\n"), *ppDot11ExtUIProperty);
            }
            if (pcEntries)
            {
                // As many as there are: a property whose entries could not be made offers none, rather than memory that is
                // not there.
                *pcEntries = m_bHasEntries ? m_entries->Count() : 0;
                IhvuiTrace(traceLevelInfo, OLESTR("Set *pcEntries to %u\n"), *pcEntries);
            }
            // The entries keep their texts; later look-ups of names use the flag until the root object resets it.
            if (pConnectionContext && CConnectionContextReader(pConnectionContext).ConnectionKind() != connectionKindPlain)
                SetQualifiedNames(*m_pInfo, true);
            if (puDefaultSelection)
            {
                *puDefaultSelection = m_bHasEntries ? DefaultSelection(*m_pInfo, settings.cipher) : 0;
                IhvuiTrace(traceLevelInfo, OLESTR("*puDefaultSelection: %d\n"), *puDefaultSelection);
            }
            return S_OK;
        });
}

HRESULT STDMETHODCALLTYPE CExtUIKey::Dot11ExtUIPropertySetDisplayInfo(ULONG uDisplayInfoIndex, BSTR bstrIHVProfile, void*,
                                                                      Dot11ExtUIPropertyEntry* pDot11ExtUIProperty,
                                                                      BSTR* bstrModifiedIHVProfile, BOOL* pbIsModified)
{
    return AtPropertyBoundary(
        [&]
        {
            IhvuiTrace(traceLevelInfo, OLESTR("\nCExtUIKey::Dot11ExtUIPropertySetDisplayInfo\n"));
            if (uDisplayInfoIndex != 0)
                return TraceError(E_NOTIMPL);
            if (!pDot11ExtUIProperty || !bstrModifiedIHVProfile || !pbIsModified)
                return TraceError(E_INVALIDARG);
            if (!m_pInfo)
                return TraceError(E_FAIL);
            const auto& entry = *pDot11ExtUIProperty;
            TraceProfile(*m_pInfo, bstrIHVProfile);
            IhvuiTrace(traceLevelInfo, OLESTR("pDot11ExtUIProperty: %p\n"), pDot11ExtUIProperty);
            IhvuiTrace(traceLevelInfo, OLESTR("pDot11ExtUIProperty->dwDataKey                : (%Xh), %s\n"), entry.dwDataKey,
                       CipherName(entry.dwDataKey, HasQualifiedNames(*m_pInfo)));
            IhvuiTrace(traceLevelInfo, OLESTR("pDot11ExtUIProperty->bstrDisplayText          : %s\n"), entry.bstrDisplayText);
            IhvuiTrace(traceLevelInfo, OLESTR("pDot11ExtUIProperty->dot11ExtUIDisplayInfoType: %Xh\n"),
                       entry.dot11ExtUIDisplayInfoType);

            CCXSecuritySettings settings(bstrIHVProfile);
            const bool bAuthChanged = AssignIfDifferent(settings.auth, m_pInfo->auth);
            const bool bCipherChanged = AssignIfDifferent(settings.cipher, entry.dwDataKey);
            const BOOL bIsModified = bAuthChanged || bCipherChanged ? TRUE : FALSE;
            const BSTR bstrModified = bIsModified ? settings.Serialise() : nullptr;

            *pbIsModified = bIsModified;
            IhvuiTrace(traceLevelInfo, OLESTR("*pbIsModified: %s\n"), BoolText(bIsModified));
            if (bIsModified)
            {
                *bstrModifiedIHVProfile = bstrModified;
                IhvuiTrace(traceLevelInfo, OLESTR("*bstrModifiedIHVProfile: %s\n"), bstrModified);
            }
            return S_OK;
        });
}

HRESULT STDMETHODCALLTYPE CExtUIKey::Dot11ExtUIPropertyGetFlags(ULONG* puQualifiedNames, ULONG* puKind)
{
    if (!m_pInfo)
        return E_FAIL;
    if (!puQualifiedNames || !puKind)
        return E_INVALIDARG;
    *puQualifiedNames = HasQualifiedNames(*m_pInfo) ? 1 : 0;
    *puKind = m_pInfo->kind;
    return S_OK;
}
