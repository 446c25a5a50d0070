// The built module beside this program, and its properties, as a host has them.
#pragma once

#include "extui/Dot11ExtUI.h"
#include "profile/ComPtr.h"

namespace answers
{
class CLoadedModule
{
public:
    // Ends the program with a message when the module cannot be loaded.
    CLoadedModule();
    ~CLoadedModule();
    CLoadedModule(const CLoadedModule&) = delete;
    CLoadedModule& operator=(const CLoadedModule&) = delete;

    CComRef<ICCXExtUIKey> SecurityProperty() const;
    CComRef<ICCXExtUICon> ConnectionProperty() const;

private:
    template <class Interface>
    CComRef<Interface> Create(REFIID riid) const;

    HMODULE m_hModule;
};
} // namespace answers
