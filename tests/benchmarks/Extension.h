// The module as a host holds it: loaded, its class registered for this process, one property of each kind.
#pragma once

#include "host/Module.h"

namespace bench
{
struct Extension
{
    static CComRef<IDot11ExtUIProperty> Property(ULONG uKind)
    {
        ULONG cProperties = 0;
        IDot11ExtUIProperty** ppProperties = nullptr;
        CComRef<IDot11ExtUIProperty> property;
        if (ActivateExtension()->Dot11ExtUIGetProperties(uKind, &cProperties, &ppProperties) == S_OK)
            *property.Put() = ppProperties[0];
        CoTaskMemFree(ppProperties);
        return property;
    }

    CLoadedModule module{std::string()};
    CClassRegistration registration{module};
    CComRef<IDot11ExtUIProperty> security = Property(propertyKindSecurity);
    CComRef<IDot11ExtUIProperty> connection = Property(propertyKindConnection);
};
} // namespace bench
