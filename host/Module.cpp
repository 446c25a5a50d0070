#include "host/Module.h"

#include "host/ComResults.h"
#include "host/HostError.h"

namespace
{
constexpr CWideView defaultModule = OLESTR("korihvui.dll");

using GetClassObject = HRESULT(WINAPI*)(REFCLSID, REFIID, LPVOID*);
using PlainExport = HRESULT(WINAPI*)();

bool Exists(const CWideString& strFile)
{
    return GetFileAttributesW(strFile.c_str()) != INVALID_FILE_ATTRIBUTES;
}

// An installer puts the module where the module's own search finds its languages, and that is not beside the program.
CWideString DefaultModule()
{
    CWideString strBeside = BesideProgram(defaultModule);
    CWideString strInstalled = InSystemFolder(defaultModule);
    return !Exists(strBeside) && Exists(strInstalled) ? strInstalled : strBeside;
}

CWideString FullPath(const std::string& strFile)
{
    return strFile.empty() ? DefaultModule() : std::filesystem::absolute(PathOf(strFile)).string<WCHAR>();
}
} // namespace

CComApartment::CComApartment()
{
    RequireSuccess(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "CoInitializeEx");
}

CComApartment::~CComApartment()
{
    CoUninitialize();
}

CLoadedModule::CLoadedModule(const std::string& strFile) : CLoadedModule(FullPath(strFile))
{
}

CLoadedModule::CLoadedModule(CWideString strFile) : m_strFile(std::move(strFile)), m_module(LoadLibraryW(m_strFile.c_str()))
{
    if (!m_module)
        throw CHostError(Name() + ": cannot be loaded: " + ErrorText(GetLastError()));
}

std::string CLoadedModule::Name() const
{
    return Utf8Of(m_strFile);
}

CComRef<IClassFactory> CLoadedModule::ClassFactory() const
{
    CComRef<IClassFactory> factory;
    RequireSuccess(Export<GetClassObject>(m_module.Get(), "DllGetClassObject")(CLSID_ExtUI, IID_IClassFactory, factory.PutVoid()),
                   "DllGetClassObject");
    return factory;
}

HRESULT CLoadedModule::Register() const
{
    return Export<PlainExport>(m_module.Get(), "DllRegisterServer")();
}

HRESULT CLoadedModule::Unregister() const
{
    return Export<PlainExport>(m_module.Get(), "DllUnregisterServer")();
}

bool CLoadedModule::CanUnloadNow() const
{
    return Export<PlainExport>(m_module.Get(), "DllCanUnloadNow")() == S_OK;
}

CClassRegistration::CClassRegistration(const CLoadedModule& module)
{
    const CComRef<IClassFactory> factory = module.ClassFactory();
    RequireSuccess(CoRegisterClassObject(CLSID_ExtUI, factory.Get(), CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &m_dwRegistration),
                   "CoRegisterClassObject");
}

CClassRegistration::~CClassRegistration()
{
    CoRevokeClassObject(m_dwRegistration);
}

CComRef<IDot11ExtUI> ActivateExtension()
{
    CComRef<IDot11ExtUI> root;
    RequireSuccess(CoCreateInstance(CLSID_ExtUI, nullptr, CLSCTX_INPROC_SERVER, IID_IDot11ExtUI, root.PutVoid()),
                   "activating the extension");
    return root;
}
