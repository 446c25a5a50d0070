// The security property: CCKM among the authentication choices, with its ciphers as entries.
#pragma once

#include "com/ComObject.h"
#include "extui/PropertyEntries.h"

#include <memory>

class CExtUIKey final : public CComObject<CExtUIKey, ICCXExtUIKey, IID_ICCXExtUIKey>
{
public:
    HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyGetName(BSTR* pbstrName) override;
    HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyShowDialog(HWND hwndParent, BSTR bstrIHVProfile, void* pConnectionContext,
                                                           BSTR* bstrModifiedIHVProfile, BOOL* pbIsModified) override;
    HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyGetSelected(BSTR bstrIHVProfile, void* pConnectionContext,
                                                            BOOL* pfIsSelected) override;
    HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertySetSelected(BSTR bstrIHVProfile, void* pConnectionContext,
                                                            BSTR* bstrModifiedIHVProfile, BOOL* pbIsModified) override;
    HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyHasDialog(BOOL* pf) override;
    HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyGetDisplayInfo(ULONG uDisplayInfoIndex, BSTR bstrIHVProfile,
                                                               void* pConnectionContext, ULONG* pcEntries,
                                                               ULONG* puDefaultSelection,
                                                               Dot11ExtUIPropertyEntry** ppDot11ExtUIProperty) override;
    HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertySetDisplayInfo(ULONG uDisplayInfoIndex, BSTR bstrIHVProfile,
                                                               void* pConnectionContext,
                                                               Dot11ExtUIPropertyEntry* pDot11ExtUIProperty,
                                                               BSTR* bstrModifiedIHVProfile, BOOL* pbIsModified) override;
    HRESULT STDMETHODCALLTYPE Dot11ExtUIPropertyGetFlags(ULONG* puQualifiedNames, ULONG* puKind) override;
    HRESULT STDMETHODCALLTYPE Initialize(CCXSecurityPropertyInfo* pInfo) override;

private:
    CCXSecurityPropertyInfo* m_pInfo = nullptr; // not owned
    // The entries of the latest binding for which there was memory; handed out while that is the binding in force.
    std::unique_ptr<CPropertyEntries> m_entries;
    bool m_bHasEntries = false;
};
