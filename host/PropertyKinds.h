// The kinds of property that a host asks for, and the part of the profile that each works on.
#pragma once

#include "host/IhvElement.h"

#include "public/Dot11ExtUI.h"

struct PropertyKind
{
    ULONG uKind;
    const char* szName;
    VendorPlace place;
};
inline constexpr PropertyKind propertyKinds[] = {
    {propertyKindConnection, "connection", VendorPlace::Connectivity},
    {propertyKindSecurity, "security", VendorPlace::Security},
};
