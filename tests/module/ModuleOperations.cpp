// The module's own entries: load and unload, its exports, its class factory and its root object.
#include "tests/module/Operation.h"

namespace tests::walk
{
namespace
{
CWideString ModuleFile()
{
    return BesideProgram(OLESTR("korihvui.dll"));
}

HRESULT Load(CWorld& world, Outputs&)
{
    const CWideString file = ModuleFile();
    const HMODULE hModule = world.Call([&] { return LoadLibraryW(file.c_str()); });
    return hModule && FreeLibrary(hModule) ? S_OK : E_FAIL;
}

HRESULT LoadWithoutLog(CWorld& world, Outputs& outputs)
{
    std::filesystem::remove(world.log.File());
    return Load(world, outputs);
}

HRESULT LoadWithoutLogFolder(CWorld& world, Outputs& outputs)
{
    std::filesystem::remove_all(world.log.File().parent_path());
    return Load(world, outputs);
}

HRESULT Unload(CWorld& world, Outputs&)
{
    const HMODULE hModule = LoadLibraryW(ModuleFile().c_str());
    world.Call([&] { return FreeLibrary(hModule); });
    return hModule ? S_OK : E_FAIL;
}

template <const CLSID& clsid>
HRESULT GetClassObject(CWorld& world, Outputs& outputs)
{
    CComRef<IUnknown> factory;
    const HRESULT hr = world.Call([&] { return world.Module().GetClassObject(clsid, IID_IClassFactory, factory.PutVoid()); });
    outputs.others = factory ? " object" : " null";
    return hr;
}

template <const IID& iid, bool bAggregated = false>
HRESULT CreateInstance(CWorld& world, Outputs& outputs)
{
    CComRef<IClassFactory> factory;
    CComRef<IUnknown> object;
    EXPECT_EQ(S_OK, world.Module().GetClassObject(CLSID_ExtUI, IID_IClassFactory, factory.PutVoid()));
    const HRESULT hr =
        world.Call([&] { return factory->CreateInstance(bAggregated ? factory.Get() : nullptr, iid, object.PutVoid()); });
    outputs.others = object ? " object" : " null";
    return hr;
}

// What one of the steps left undone is done afterwards.
template <bool bUnregister>
HRESULT Register(CWorld& world, Outputs&)
{
    const auto run = [&](const char* szExport) { return world.Module().Export<HRESULT WINAPI()>(szExport)(); };
    const HRESULT hr = world.Call([&] { return run(bUnregister ? "DllUnregisterServer" : "DllRegisterServer"); });
    EXPECT_EQ(S_OK, run("DllRegisterServer"));
    return hr;
}

HRESULT FriendlyName(CWorld& world, Outputs& outputs)
{
    const auto root = world.Module().Create<IDot11ExtUI>(IID_IDot11ExtUI);
    return world.Call([&] { return root->Dot11ExtUIGetFriendlyName(&outputs.bstrProfile); });
}

template <ULONG uKind>
HRESULT GetProperties(CWorld& world, Outputs& outputs)
{
    const auto root = world.Module().Create<IDot11ExtUI>(IID_IDot11ExtUI);
    ULONG cProperties = 77;
    auto ppProperties = reinterpret_cast<IDot11ExtUIProperty**>(&cProperties);
    const HRESULT hr = world.Call([&] { return root->Dot11ExtUIGetProperties(uKind, &cProperties, &ppProperties); });
    for (ULONG i = 0; ppProperties && i < cProperties; ++i)
        ppProperties[i]->Release();
    CoTaskMemFree(ppProperties);
    outputs.others = " " + std::to_string(cProperties) + (ppProperties ? " array" : " null");
    return hr;
}

#define NO_PROPERTY " 0 null"
// COM has words of its own for a class object that could not be made.
#define NOT_ACTIVATED "(E_OUTOFMEMORY|REGDB_E_CLASSNOTREG)" NO_PROPERTY "( traced E_OUTOFMEMORY)?"

const Operation moduleOperations[] = {
    {"load", Load, {}, true},
    {"load_without_log", LoadWithoutLog, {}, true},
    {"load_without_log_folder", LoadWithoutLogFolder, {}, true},
    {"unload", Unload, {}, true},
    {"DllGetClassObject", GetClassObject<CLSID_ExtUI>, {{"malloc", "E_OUTOFMEMORY null traced E_OUTOFMEMORY"}}},
    {"DllGetClassObject_other_class", GetClassObject<IID_IDot11ExtUI>},
    {"DllRegisterServer", Register<false>, {{"RegOpenKeyExW|RegCreateKeyExW|RegSetValueExW|GetModuleFileNameW", "S_FALSE"}}},
    {"DllUnregisterServer", Register<true>, {{"RegOpenKeyExW|RegCreateKeyExW|RegDeleteKeyW", "S_FALSE"}}},
    {"CreateInstance_root", CreateInstance<IID_IDot11ExtUI>, {{"malloc", "E_OUTOFMEMORY null"}}},
    {"CreateInstance_connection", CreateInstance<IID_ICCXExtUICon>, {{"malloc", "E_OUTOFMEMORY null"}}},
    {"CreateInstance_security", CreateInstance<IID_ICCXExtUIKey>, {{"malloc", "E_OUTOFMEMORY null"}}},
    {"CreateInstance_aggregated", CreateInstance<IID_IDot11ExtUI, true>},
    {"Dot11ExtUIGetFriendlyName", FriendlyName, {{"SysAllocString", "S_OK \\(null\\)"}}},
    {"Dot11ExtUIGetProperties_connection",
     GetProperties<propertyKindConnection>,
     {{"CoTaskMemAlloc", "E_OUTOFMEMORY" NO_PROPERTY},
      {"CoCreateInstance", "REGDB_E_CLASSNOTREG" NO_PROPERTY},
      {"malloc", NOT_ACTIVATED}}},
    {"Dot11ExtUIGetProperties_security",
     GetProperties<propertyKindSecurity>,
     {{"CoTaskMemAlloc", "E_OUTOFMEMORY" NO_PROPERTY},
      {"CoCreateInstance", "REGDB_E_CLASSNOTREG" NO_PROPERTY},
      // The last allocation is that of the entries, which a property can do without.
      {"malloc", NOT_ACTIVATED "|S_OK 1 array"}}},
};
} // namespace

std::span<const Operation> ModuleOperations()
{
    return moduleOperations;
}
} // namespace tests::walk
