// The module's own entries: load and unload, its exports, its class factory and its root object.
#include "tests/module/Operation.h"

namespace tests::walk
{
namespace
{
using Kind = Operation::Kind;

std::string LoadArmed(CFault* pFault)
{
    const auto path = PlatformNameOf(BuildFolder() / "korihvui.dll");
    const HMODULE hModule = Call(pFault, [&] { return LoadLibraryW(path.c_str()); });
    if (!hModule)
        return "not loaded";
    FreeLibrary(hModule);
    return "loaded";
}

std::string Load(CWorld&, CFault* pFault)
{
    return LoadArmed(pFault);
}

std::string LoadWithoutLog(CWorld& world, CFault* pFault)
{
    std::filesystem::remove(world.Log().File());
    return LoadArmed(pFault);
}

std::string LoadWithoutLogFolder(CWorld& world, CFault* pFault)
{
    std::filesystem::remove_all(world.Log().File().parent_path());
    return LoadArmed(pFault);
}

std::string Unload(CWorld&, CFault* pFault)
{
    const HMODULE hModule = LoadLibraryW(PlatformNameOf(BuildFolder() / "korihvui.dll").c_str());
    Call(pFault, [&] { return FreeLibrary(hModule); });
    return hModule ? "unloaded" : "not loaded";
}

std::string Asked(CFault* pFault, const std::function<HRESULT(void**)>& ask)
{
    CComRef<IUnknown> object;
    const HRESULT hr = Call(pFault, [&] { return ask(object.PutVoid()); });
    return ResultText(hr) + (object ? " object" : " null");
}

template <const CLSID& clsid, const IID& iid>
std::string GetClassObject(CWorld& world, CFault* pFault)
{
    return Asked(pFault, [&](void** ppv) { return world.Module().GetClassObject(clsid, iid, ppv); });
}

template <const IID& iid, bool bAggregated = false>
std::string CreateInstance(CWorld& world, CFault* pFault)
{
    CComRef<IClassFactory> factory;
    EXPECT_EQ(S_OK, world.Module().GetClassObject(CLSID_ExtUI, IID_IClassFactory, factory.PutVoid()));
    return Asked(pFault, [&](void** ppv) { return factory->CreateInstance(bAggregated ? factory.Get() : nullptr, iid, ppv); });
}

// What one of the steps left undone is done afterwards.
template <bool bUnregister>
std::string Register(CWorld& world, CFault* pFault)
{
    const auto run = [&](const char* szExport) { return world.Module().Export<HRESULT WINAPI()>(szExport)(); };
    const HRESULT hr = Call(pFault, [&] { return run(bUnregister ? "DllUnregisterServer" : "DllRegisterServer"); });
    EXPECT_EQ(S_OK, run("DllRegisterServer"));
    return ResultText(hr);
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

// COM has words of its own for a class object that could not be made.
#define NOT_ACTIVATED "(E_OUTOFMEMORY|80040154) 0 null( traced E_OUTOFMEMORY)?"

const Operation moduleOperations[] = {
    {"load", Kind::Loads, Load},
    {"load_without_log", Kind::Loads, LoadWithoutLog},
    {"load_without_log_folder", Kind::Loads, LoadWithoutLogFolder},
    {"unload", Kind::Loads, Unload},
    {"DllGetClassObject",
     Kind::Plain,
     GetClassObject<CLSID_ExtUI, IID_IClassFactory>,
     {{"operator new", "E_OUTOFMEMORY null traced E_OUTOFMEMORY"}}},
    {"DllGetClassObject_other_class", Kind::Plain, GetClassObject<IID_IDot11ExtUI, IID_IClassFactory>},
    {"DllRegisterServer",
     Kind::Plain,
     Register<false>,
     {{"RegOpenKeyExW|RegCreateKeyExW|RegSetValueExW|GetModuleFileNameW", "S_FALSE"}}},
    {"DllUnregisterServer", Kind::Plain, Register<true>, {{"RegOpenKeyExW|RegCreateKeyExW|RegDeleteKeyW", "S_FALSE"}}},
    {"CreateInstance_root", Kind::Plain, CreateInstance<IID_IDot11ExtUI>, {{"operator new", "E_OUTOFMEMORY null"}}},
    {"CreateInstance_connection", Kind::Plain, CreateInstance<IID_ICCXExtUICon>, {{"operator new", "E_OUTOFMEMORY null"}}},
    {"CreateInstance_security", Kind::Plain, CreateInstance<IID_ICCXExtUIKey>, {{"operator new", "E_OUTOFMEMORY null"}}},
    {"CreateInstance_aggregated", Kind::Plain, CreateInstance<IID_IDot11ExtUI, true>},
    {"Dot11ExtUIGetFriendlyName", Kind::Plain, FriendlyName, {{"SysAllocString", "S_OK \\(null\\)"}}},
    {"Dot11ExtUIGetProperties_connection",
     Kind::Plain,
     GetProperties<propertyKindConnection>,
     {{"CoTaskMemAlloc", "E_OUTOFMEMORY 0 null"}, {"CoCreateInstance", "80040154 0 null"}, {"operator new", NOT_ACTIVATED}}},
    {"Dot11ExtUIGetProperties_security",
     Kind::Plain,
     GetProperties<propertyKindSecurity>,
     {{"CoTaskMemAlloc", "E_OUTOFMEMORY 0 null"},
      {"CoCreateInstance", "80040154 0 null"},
      // The last allocation is that of the entries, which a property can do without.
      {"operator new", NOT_ACTIVATED "|S_OK 1 array"}}},
};
} // namespace

std::span<const Operation> ModuleOperations()
{
    return moduleOperations;
}
} // namespace tests::walk
