#include "extui/ExtUI.h"

#include "com/Boundary.h"
#include "extui/PropertyArray.h"
#include "extui/SecurityPropertyInfo.h"
#include "values/ComRef.h"

namespace
{
// Properties are made through activation of the module's own class, so that they are what any other client would get.
template <class Interface>
HRESULT ActivateProperty(REFIID riid, CComRef<Interface>& property)
{
    return CoCreateInstance(CLSID_ExtUI, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_INPROC_HANDLER, riid, property.PutVoid());
}

HRESULT CreateSecurityProperties(CPropertyArray& properties)
{
    for (auto& info : SecurityPropertyInfos())
    {
        CComRef<ICCXExtUIKey> property;
        const HRESULT hr = ActivateProperty(IID_ICCXExtUIKey, property);
        if (hr != S_OK)
            return hr;
        SetQualifiedNames(info, info.bInitialQualifiedNames != 0);
        property->Initialize(&info);
        properties.Add(property.Detach());
    }
    return S_OK;
}

HRESULT CreateConnectionProperty(CPropertyArray& properties)
{
    CComRef<ICCXExtUICon> property;
    const HRESULT hr = ActivateProperty(IID_ICCXExtUICon, property);
    if (hr == S_OK)
        properties.Add(property.Detach());
    return hr;
}

struct OfferedKind
{
    ULONG uKind;
    std::size_t (*count)();
    HRESULT (*create)(CPropertyArray& properties);
};
constexpr OfferedKind offeredKinds[] = {
    {propertyKindSecurity, [] { return SecurityPropertyInfos().size(); }, CreateSecurityProperties},
    {propertyKindConnection, [] { return std::size_t{1}; }, CreateConnectionProperty},
};
} // namespace

HRESULT STDMETHODCALLTYPE CExtUI::Dot11ExtUIGetFriendlyName(BSTR* pbstrName)
{
    *pbstrName = SysAllocString(OLESTR("Korvane"));
    return S_OK;
}

HRESULT STDMETHODCALLTYPE CExtUI::Dot11ExtUIGetProperties(ULONG uPropertyKind, ULONG* pcProperties,
                                                          IDot11ExtUIProperty*** pppProperties)
{
    *pcProperties = 0;
    *pppProperties = nullptr;
    return AtBoundary(
        [&]
        {
            for (const auto& offered : offeredKinds)
            {
                if (offered.uKind != uPropertyKind)
                    continue;
                CPropertyArray properties(offered.count());
                if (!properties)
                    return E_OUTOFMEMORY;
                const HRESULT hr = offered.create(properties);
                if (hr == S_OK)
                    properties.HandOver(pcProperties, pppProperties);
                return hr;
            }
            return E_NOTIMPL;
        });
}

HRESULT STDMETHODCALLTYPE CExtUI::Dot11ExtUIReserved(void*, void*)
{
    return E_NOTIMPL;
}
