#include "answers/LoadedModule.h"

#include "extui/SecurityPropertyInfo.h"
#include "trace/WideText.h"

#include <cstdio>
#include <cstdlib>

namespace answers
{
namespace
{
[[noreturn]] void Give(const char* szProblem)
{
    std::fprintf(stderr, "korihvui.dll beside this program %s\n", szProblem);
    std::exit(1);
}
} // namespace

CLoadedModule::CLoadedModule()
{
    CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    WCHAR szProgram[MAX_PATH + 1] = {};
    GetModuleFileNameW(nullptr, szProgram, MAX_PATH);
    CWideString path(szProgram);
    path.resize(path.find_last_of(OLESTR("\\/")) + 1);
    m_hModule = LoadLibraryW((path + OLESTR("korihvui.dll")).c_str());
    if (!m_hModule)
        Give("cannot be loaded");
}

CLoadedModule::~CLoadedModule()
{
    FreeLibrary(m_hModule);
    CoUninitialize();
}

template <class Interface>
CComRef<Interface> CLoadedModule::Create(REFIID riid) const
{
    using GetClassObject = HRESULT WINAPI(REFCLSID, REFIID, void**);
    auto* const pfnGetClassObject =
        reinterpret_cast<GetClassObject*>(reinterpret_cast<void*>(GetProcAddress(m_hModule, "DllGetClassObject")));
    CComRef<IClassFactory> factory;
    CComRef<Interface> object;
    if (!pfnGetClassObject || FAILED(pfnGetClassObject(CLSID_ExtUI, IID_IClassFactory, factory.PutVoid())) ||
        FAILED(factory->CreateInstance(nullptr, riid, object.PutVoid())))
        Give("hands out no object");
    return object;
}

CComRef<ICCXExtUIKey> CLoadedModule::SecurityProperty() const
{
    auto property = Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
    if (FAILED(property->Initialize(&SecurityPropertyInfos()[0])))
        Give("does not take its description");
    return property;
}

CComRef<ICCXExtUICon> CLoadedModule::ConnectionProperty() const
{
    return Create<ICCXExtUICon>(IID_ICCXExtUICon);
}
} // namespace answers
