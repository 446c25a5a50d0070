// Loading the module and activating its class.
#pragma once

#include "host/Library.h"
#include "public/Dot11ExtUI.h"
#include "values/ComRef.h"

#include <string>

// COM on this thread for as long as this lives.
class CComApartment
{
public:
    CComApartment();
    ~CComApartment();
    CComApartment(const CComApartment&) = delete;
    CComApartment& operator=(const CComApartment&) = delete;
};

// A module that is loaded by its full path.
class CLoadedModule
{
public:
    // UTF-8; an empty name stands for korihvui.dll beside the program. Throws CHostError.
    explicit CLoadedModule(const std::string& strFile);
    // The platform's own name of the file. Throws CHostError.
    explicit CLoadedModule(CWideString strFile);

    std::string Name() const;

    CComRef<IClassFactory> ClassFactory() const;
    // The export's results; CHostError when the module has no such export.
    HRESULT Register() const;
    HRESULT Unregister() const;
    bool CanUnloadNow() const;

private:
    CWideString m_strFile;
    CUniqueLibrary m_module;
};

// Registers a class object for this process alone, so that activating the class finds it and the machine stays as it is.
class CClassRegistration
{
public:
    explicit CClassRegistration(const CLoadedModule& module);
    ~CClassRegistration();
    CClassRegistration(const CClassRegistration&) = delete;
    CClassRegistration& operator=(const CClassRegistration&) = delete;

private:
    DWORD m_dwRegistration = 0;
};

// The root object of the activated class.
CComRef<IDot11ExtUI> ActivateExtension();
