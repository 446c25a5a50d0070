// The root object: names the extension and hands out its properties.
#pragma once

#include "com/ComObject.h"
#include "public/Dot11ExtUI.h"

class CExtUI final : public CComObject<CExtUI, IDot11ExtUI, IID_IDot11ExtUI>
{
public:
    HRESULT STDMETHODCALLTYPE Dot11ExtUIGetFriendlyName(BSTR* pbstrName) override;
    HRESULT STDMETHODCALLTYPE Dot11ExtUIGetProperties(ULONG uPropertyKind, ULONG* pcProperties,
                                                      IDot11ExtUIProperty*** pppProperties) override;
    HRESULT STDMETHODCALLTYPE Dot11ExtUIReserved(void* pReserved1, void* pReserved2) override;
};
