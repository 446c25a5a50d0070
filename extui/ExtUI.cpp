#include "extui/ExtUI.h"

#include "com/Boundary.h"
#include "extui/SecurityPropertyInfo.h"
#include "values/ComRef.h"
#include "values/Unique.h"

#include <vector>

namespace
{
using Properties = std::vector<CComRef<IDot11ExtUIProperty>>;

// The array in which they are handed to the caller: task memory, one reference in each slot.
struct CPropertyArrayCloser
{
    using Handle = IDot11ExtUIProperty**;
    static Handle Empty()
    {
        return nullptr;
    }
    static void Close(Handle ppProperties)
    {
        CoTaskMemFree(ppProperties);
    }
};

// Properties are made through activation of the module's own class, so that they are what any other client would get.
template <class Interface>
HRESULT ActivateProperty(REFIID riid, CComRef<Interface>& property)
{
    return CoCreateInstance(CLSID_ExtUI, nullptr, CLSCTX_INPROC_SERVER | CLSCTX_INPROC_HANDLER, riid, property.PutVoid());
}

HRESULT CreateSecurityProperties(Properties& properties)
{
    for (auto& info : SecurityPropertyInfos())
    {
        CComRef<ICCXExtUIKey> property;
        const HRESULT hr = ActivateProperty(IID_ICCXExtUIKey, property);
        if (hr != S_OK)
            return hr;
        SetQualifiedNames(info, info.bInitialQualifiedNames != 0);
        property->Initialize(&info);
        properties.emplace_back();
        *properties.back().Put() = property.Detach();
    }
    return S_OK;
}

HRESULT CreateConnectionProperty(Properties& properties)
{
    CComRef<ICCXExtUICon> property;
    const HRESULT hr = ActivateProperty(IID_ICCXExtUICon, property);
    if (hr != S_OK)
        return hr;
    properties.emplace_back();
    *properties.back().Put() = property.Detach();
    return S_OK;
}

struct OfferedKind
{
    ULONG uKind;
    std::size_t (*count)();
    HRESULT (*create)(Properties& properties);
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
                CUnique<CPropertyArrayCloser> array(
                    static_cast<IDot11ExtUIProperty**>(CoTaskMemAlloc(offered.count() * sizeof(IDot11ExtUIProperty*))));
                if (!array)
                    return E_OUTOFMEMORY;
                Properties properties;
                const HRESULT hr = offered.create(properties);
                if (hr != S_OK)
                    return hr;
                for (auto& property : properties)
                    array.Get()[(*pcProperties)++] = property.Detach();
                *pppProperties = array.Detach();
                return S_OK;
            }
            return E_NOTIMPL;
        });
}

HRESULT STDMETHODCALLTYPE CExtUI::Dot11ExtUIReserved(void*, void*)
{
    return E_NOTIMPL;
}
