// The operations of both properties that call the platform, but for the connection property's dialog.
#include "extui/SecurityPropertyInfo.h"
#include "tests/module/Operation.h"

namespace tests::walk
{
namespace
{
constexpr const WCHAR* szSecurityProfile =
    OLESTR("<CCX><authenticatingNetwork><wpa2><encryption>TKIP</encryption></wpa2></authenticatingNetwork></CCX>");
constexpr const WCHAR* szConnectionProfile =
    OLESTR("<CCX><RadioMeasurement><enabled><MaxOffChannelTimeMs>20</MaxOffChannelTimeMs><MinOnChannelTimeMs>300")
        OLESTR("</MinOnChannelTimeMs></enabled></RadioMeasurement><KeepAliveTimer><Period>9</Period></KeepAliveTimer>")
            OLESTR("<Diagnostics><Channel><SSID><Hex>4142</Hex></SSID></Channel></Diagnostics></CCX>");

CComRef<ICCXExtUIKey> Security(CWorld& world)
{
    auto property = world.Module().Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
    EXPECT_EQ(S_OK, property->Initialize(&SecurityPropertyInfos()[0]));
    return property;
}

CComRef<ICCXExtUICon> Connection(CWorld& world)
{
    return world.Module().Create<ICCXExtUICon>(IID_ICCXExtUICon);
}

HRESULT Entries(ICCXExtUIKey& property, BSTR bstrProfile, Outputs& outputs)
{
    ULONG cEntries = 77;
    ULONG uDefault = 77;
    Dot11ExtUIPropertyEntry mark = {};
    Dot11ExtUIPropertyEntry* pEntries = &mark;
    const HRESULT hr = property.Dot11ExtUIPropertyGetDisplayInfo(0, bstrProfile, nullptr, &cEntries, &uDefault, &pEntries);
    outputs.others = " " + std::to_string(cEntries) + " " + std::to_string(uDefault);
    outputs.others += pEntries == &mark ? " untouched" : pEntries ? "" : " null";
    for (ULONG i = 0; pEntries && pEntries != &mark && i < cEntries; ++i)
        outputs.others += pEntries[i].bstrDisplayText ? " " + Narrow(pEntries[i].bstrDisplayText) : " (null)";
    return hr;
}

HRESULT GetDisplayInfo(CWorld& world, Outputs& outputs)
{
    const auto property = Security(world);
    const CBstr profile(szSecurityProfile);
    return world.Call([&] { return Entries(*property.Get(), profile.Get(), outputs); });
}

// Whatever became of it, the property is there to be asked.
HRESULT Initialize(CWorld& world, Outputs& outputs)
{
    const auto property = world.Module().Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
    const HRESULT hr = world.Call([&] { return property->Initialize(&SecurityPropertyInfos()[0]); });
    EXPECT_EQ(S_OK, Entries(*property.Get(), nullptr, outputs));
    return hr;
}

template <auto property>
HRESULT Name(CWorld& world, Outputs& outputs)
{
    const auto object = property(world);
    return world.Call([&] { return object->Dot11ExtUIPropertyGetName(&outputs.bstrProfile); });
}

template <auto property, const WCHAR* const& szProfile>
HRESULT SetSelected(CWorld& world, Outputs& outputs)
{
    const auto object = property(world);
    const CBstr profile(szProfile);
    return world.Call(
        [&] { return object->Dot11ExtUIPropertySetSelected(profile.Get(), nullptr, &outputs.bstrProfile, &outputs.bFlag); });
}

HRESULT GetSelected(CWorld& world, Outputs& outputs)
{
    const auto property = Security(world);
    const CBstr profile(szSecurityProfile);
    return world.Call([&] { return property->Dot11ExtUIPropertyGetSelected(profile.Get(), nullptr, &outputs.bFlag); });
}

HRESULT SetDisplayInfo(CWorld& world, Outputs& outputs)
{
    const auto property = Security(world);
    const CBstr profile(szSecurityProfile);
    Dot11ExtUIPropertyEntry entry = {4, 0, nullptr};
    return world.Call(
        [&] {
            return property->Dot11ExtUIPropertySetDisplayInfo(0, profile.Get(), nullptr, &entry, &outputs.bstrProfile,
                                                              &outputs.bFlag);
        });
}

#define DOCUMENTS                                                                                                                \
    "CoCreateInstance|CreateDocument|loadXML|get_.*|selectSingleNode|createElement|appendChild|insertBefore|put_text|"           \
    "SysAllocString"
// A new profile that holds what could be written, or none because no document could be made.
#define WRITTEN "S_OK 1 (\\(null\\)|<CCX.*>)"

const std::vector<Operation::Failure> securityWriting = {
    {"malloc", OUT_OF_MEMORY}, {"SysAllocStringLen", OUT_OF_MEMORY "|" WRITTEN}, {DOCUMENTS, WRITTEN}};

const Operation propertyOperations[] = {
    // A text that could not be allocated is left null.
    {"security_Initialize",
     Initialize,
     {{"malloc", "E_OUTOFMEMORY 0 0 null traced invalid"},
      {"SysAllocString", "S_OK 3 2( WEP| TKIP| AES| \\(null\\)){3} traced invalid"}}},
    {"security_GetName", Name<Security>, {{"SysAllocString", "E_OUTOFMEMORY \\(null\\)"}}},
    {"security_GetSelected",
     GetSelected,
     {{"malloc", OUT_OF_MEMORY},
      {"SysAllocStringLen", OUT_OF_MEMORY "|S_OK 1 traced invalid"},
      {DOCUMENTS, "S_OK 0|S_OK 1 traced invalid"}}},
    {"security_SetSelected", SetSelected<Security, szSecurityProfile>, securityWriting},
    {"security_GetDisplayInfo",
     GetDisplayInfo,
     {{"malloc", "E_OUTOFMEMORY 77 77 untouched traced E_OUTOFMEMORY"},
      {"SysAllocStringLen", "E_OUTOFMEMORY 77 77 untouched traced E_OUTOFMEMORY|S_OK 3 2 WEP TKIP AES traced invalid"},
      {DOCUMENTS, "S_OK 3 1 WEP TKIP AES|S_OK 3 2 WEP TKIP AES traced invalid"}}},
    {"security_SetDisplayInfo", SetDisplayInfo, securityWriting},
    {"connection_GetName", Name<Connection>, {{"SysAllocString", "E_OUTOFMEMORY \\(null\\)"}, {"LoadStringW", "S_OK "}}},
    {"connection_SetSelected",
     SetSelected<Connection, szConnectionProfile>,
     {{"malloc", OUT_OF_MEMORY},
      {"SysAllocStringLen", OUT_OF_MEMORY "|" WRITTEN "( traced invalid)?"},
      {DOCUMENTS, WRITTEN "( traced invalid)?"}}},
};
} // namespace

std::span<const Operation> PropertyOperations()
{
    return propertyOperations;
}
} // namespace tests::walk
