// The module's own entries: load and unload, its exports, its class factory and its root object.
#include "tests/module/Operation.h"

namespace tests::walk
{
namespace
{
using Kind = Operation::Kind;

constexpr const char* szNoOther = "";
constexpr const char* szRegistered = "S_FALSE";

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

std::string CanUnloadNow(CWorld& world, CFault* pFault)
{
    return ResultText(Call(pFault, [&] { return world.Module().CanUnloadNow(); }));
}

template <const CLSID& clsid, const IID& iid>
std::string GetClassObject(CWorld& world, CFault* pFault)
{
    CComRef<IUnknown> object;
    const HRESULT hr = Call(pFault, [&] { return world.Module().GetClassObject(clsid, iid, object.PutVoid()); });
    return ResultText(hr) + (object ? " object" : " null");
}

HRESULT CallExport(CWorld& world, CFault* pFault, const char* szName)
{
    return Call(pFault, [&] { return world.Module().Export<HRESULT WINAPI()>(szName)(); });
}

std::string Register(CWorld& world, CFault* pFault)
{
    const HRESULT hr = CallExport(world, pFault, "DllRegisterServer");
    // What one of the steps left undone.
    EXPECT_EQ(S_OK, CallExport(world, nullptr, "DllRegisterServer"));
    return ResultText(hr);
}

std::string Unregister(CWorld& world, CFault* pFault)
{
    const HRESULT hr = CallExport(world, pFault, "DllUnregisterServer");
    EXPECT_EQ(S_OK, CallExport(world, nullptr, "DllRegisterServer"));
    return ResultText(hr);
}

CComRef<IClassFactory> Factory(CWorld& world)
{
    CComRef<IClassFactory> factory;
    EXPECT_EQ(S_OK, world.Module().GetClassObject(CLSID_ExtUI, IID_IClassFactory, factory.PutVoid()));
    return factory;
}

template <const IID& iid>
std::string CreateInstance(CWorld& world, CFault* pFault)
{
    const auto factory = Factory(world);
    CComRef<IUnknown> object;
    const HRESULT hr = Call(pFault, [&] { return factory->CreateInstance(nullptr, iid, object.PutVoid()); });
    return ResultText(hr) + (object ? " object" : " null");
}

std::string CreateAggregated(CWorld& world, CFault* pFault)
{
    const auto factory = Factory(world);
    CComRef<IUnknown> object;
    const HRESULT hr = Call(pFault, [&] { return factory->CreateInstance(factory.Get(), IID_IDot11ExtUI, object.PutVoid()); });
    return ResultText(hr) + (object ? " object" : " null");
}

std::string LockServer(CWorld& world, CFault* pFault)
{
    const auto factory = Factory(world);
    const HRESULT hr = Call(pFault, [&] { return factory->LockServer(TRUE); });
    const auto locked = ResultText(world.Module().CanUnloadNow());
    return ResultText(hr) + " " + locked + " " + ResultText(Call(pFault, [&] { return factory->LockServer(FALSE); }));
}

constexpr Operation moduleOperations[] = {
    {"load", Kind::Loads, Load, "not loaded", szNoOther},
    {"load_without_log", Kind::Loads, LoadWithoutLog, "not loaded", szNoOther},
    {"load_without_log_folder", Kind::Loads, LoadWithoutLogFolder, "not loaded", szNoOther},
    {"unload", Kind::Loads, Unload, "", szNoOther},
    {"DllCanUnloadNow", Kind::Plain, CanUnloadNow, "", szNoOther},
    {"DllGetClassObject", Kind::Plain, GetClassObject<CLSID_ExtUI, IID_IClassFactory>, "E_OUTOFMEMORY null", szNoOther},
    {"DllGetClassObject_other_interface", Kind::Plain, GetClassObject<CLSID_ExtUI, IID_IDot11ExtUI>, "E_OUTOFMEMORY null",
     szNoOther},
    {"DllGetClassObject_other_class", Kind::Plain, GetClassObject<IID_IDot11ExtUI, IID_IClassFactory>, "", szNoOther},
    {"DllRegisterServer", Kind::Plain, Register, "E_OUTOFMEMORY", szRegistered},
    {"DllUnregisterServer", Kind::Plain, Unregister, "E_OUTOFMEMORY", szRegistered},
    {"CreateInstance_root", Kind::Plain, CreateInstance<IID_IDot11ExtUI>, "E_OUTOFMEMORY null", szNoOther},
    {"CreateInstance_connection", Kind::Plain, CreateInstance<IID_ICCXExtUICon>, "E_OUTOFMEMORY null", szNoOther},
    {"CreateInstance_security", Kind::Plain, CreateInstance<IID_ICCXExtUIKey>, "E_OUTOFMEMORY null", szNoOther},
    {"CreateInstance_other_interface", Kind::Plain, CreateInstance<IID_IUnknown>, "", szNoOther},
    {"CreateInstance_aggregated", Kind::Plain, CreateAggregated, "", szNoOther},
    {"LockServer", Kind::Plain, LockServer, "", szNoOther},
};
} // namespace

std::span<const Operation> ModuleOperations()
{
    return moduleOperations;
}
} // namespace tests::walk
