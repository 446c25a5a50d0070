// The root object, and what all three classes have in common.
#include "tests/module/Operation.h"

namespace tests::walk
{
namespace
{
using Kind = Operation::Kind;

template <class Interface, const IID& iid>
std::string References(CWorld& world, CFault* pFault)
{
    const auto object = world.Module().Create<Interface>(iid);
    CComRef<IUnknown> same;
    CComRef<IUnknown> other;
    const HRESULT hrSame = Call(pFault, [&] { return object->QueryInterface(iid, same.PutVoid()); });
    const HRESULT hrOther = Call(pFault, [&] { return object->QueryInterface(IID_IClassFactory, other.PutVoid()); });
    const ULONG uAdded = Call(pFault, [&] { return object->AddRef(); });
    const ULONG uLeft = Call(pFault, [&] { return object->Release(); });
    return ResultText(hrSame) + (same ? " object " : " null ") + ResultText(hrOther) + (other ? " object " : " null ") +
           std::to_string(uAdded) + " " + std::to_string(uLeft);
}

template <class Interface, const IID& iid>
std::string LastRelease(CWorld& world, CFault* pFault)
{
    auto object = world.Module().Create<Interface>(iid);
    Interface* const pObject = object.Detach();
    return std::to_string(Call(pFault, [&] { return pObject->Release(); }));
}

std::string FriendlyName(CWorld& world, CFault* pFault)
{
    const auto root = world.Module().Create<IDot11ExtUI>(IID_IDot11ExtUI);
    CBstr name;
    const HRESULT hr = Call(pFault, [&] { return root->Dot11ExtUIGetFriendlyName(name.Put()); });
    return ResultText(hr) + " " + TextOf(name);
}

template <ULONG uKind>
std::string GetProperties(CWorld& world, CFault* pFault)
{
    const auto root = world.Module().Create<IDot11ExtUI>(IID_IDot11ExtUI);
    ULONG cProperties = 77;
    auto ppProperties = reinterpret_cast<IDot11ExtUIProperty**>(&cProperties);
    const HRESULT hr = Call(pFault, [&] { return root->Dot11ExtUIGetProperties(uKind, &cProperties, &ppProperties); });
    for (ULONG i = 0; ppProperties && i < cProperties; ++i)
        ppProperties[i]->Release();
    CoTaskMemFree(ppProperties);
    return ResultText(hr) + " " + std::to_string(cProperties) + (ppProperties ? " array" : " null");
}

std::string Reserved(CWorld& world, CFault* pFault)
{
    const auto root = world.Module().Create<IDot11ExtUI>(IID_IDot11ExtUI);
    return ResultText(Call(pFault, [&] { return root->Dot11ExtUIReserved(nullptr, nullptr); }));
}

// The activation's own failure, whichever it was.
constexpr const char* szNotActivated = "[8][0-9A-F]{7} 0 null";

constexpr Operation objectOperations[] = {
    {"root_references", Kind::Plain, References<IDot11ExtUI, IID_IDot11ExtUI>, "", ""},
    {"connection_references", Kind::Plain, References<ICCXExtUICon, IID_ICCXExtUICon>, "", ""},
    {"security_references", Kind::Plain, References<ICCXExtUIKey, IID_ICCXExtUIKey>, "", ""},
    {"root_last_release", Kind::Plain, LastRelease<IDot11ExtUI, IID_IDot11ExtUI>, "", ""},
    {"connection_last_release", Kind::Plain, LastRelease<ICCXExtUICon, IID_ICCXExtUICon>, "", ""},
    {"security_last_release", Kind::Plain, LastRelease<ICCXExtUIKey, IID_ICCXExtUIKey>, "", ""},
    {"Dot11ExtUIGetFriendlyName", Kind::Plain, FriendlyName, "S_OK (null)", ""},
    {"Dot11ExtUIGetProperties_connection", Kind::Plain, GetProperties<propertyKindConnection>, "E_OUTOFMEMORY 0 null",
     szNotActivated},
    {"Dot11ExtUIGetProperties_security", Kind::Plain, GetProperties<propertyKindSecurity>, "E_OUTOFMEMORY 0 null",
     szNotActivated},
    {"Dot11ExtUIGetProperties_other", Kind::Plain, GetProperties<1>, "", ""},
    {"Dot11ExtUIReserved", Kind::Plain, Reserved, "", ""},
};
} // namespace

std::span<const Operation> ObjectOperations()
{
    return objectOperations;
}
} // namespace tests::walk
