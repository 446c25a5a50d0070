// The connection property: the connection settings, shown in a dialog.
#pragma once

#include "com/ComObject.h"
#include "public/Dot11ExtUI.h"

class CExtUICon final : public CComObject<CExtUICon, ICCXExtUICon, IID_ICCXExtUICon>
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
};
