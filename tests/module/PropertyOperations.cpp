// The operations of both properties that call the platform, but for the connection property's dialog.
#include "extui/SecurityPropertyInfo.h"
#include "tests/module/Operation.h"

namespace tests::walk
{
namespace
{
using Kind = Operation::Kind;

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

std::string Entries(ICCXExtUIKey& property, CFault* pFault, BSTR bstrProfile)
{
    ULONG cEntries = 77;
    ULONG uDefault = 77;
    Dot11ExtUIPropertyEntry mark = {};
    Dot11ExtUIPropertyEntry* pEntries = &mark;
    const HRESULT hr =
        Call(pFault,
             [&] { return property.Dot11ExtUIPropertyGetDisplayInfo(0, bstrProfile, nullptr, &cEntries, &uDefault, &pEntries); });
    std::string outcome = ResultText(hr) + " " + std::to_string(cEntries) + " " + std::to_string(uDefault);
    if (pEntries == &mark)
        return outcome + " kept";
    for (ULONG i = 0; pEntries && i < cEntries; ++i)
        outcome += pEntries[i].bstrDisplayText ? " " + Narrow(pEntries[i].bstrDisplayText) : " (null)";
    return outcome + (pEntries ? "" : " null");
}

// Whatever became of it, the property is there to be asked.
std::string Initialize(CWorld& world, CFault* pFault)
{
    const auto property = world.Module().Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
    const HRESULT hr = Call(pFault, [&] { return property->Initialize(&SecurityPropertyInfos()[0]); });
    return ResultText(hr) + ", " + Entries(*property.Get(), nullptr, nullptr);
}

template <auto property>
std::string Name(CWorld& world, CFault* pFault)
{
    const auto object = property(world);
    CBstr name;
    const HRESULT hr = Call(pFault, [&] { return object->Dot11ExtUIPropertyGetName(name.Put()); });
    return ResultText(hr) + " " + TextOf(name);
}

template <auto property, const WCHAR* const& szProfile>
std::string SetSelected(CWorld& world, CFault* pFault)
{
    const auto object = property(world);
    const CBstr profile(szProfile);
    CProfileOutputs outputs;
    const HRESULT hr = Call(
        pFault, [&] { return object->Dot11ExtUIPropertySetSelected(profile.Get(), nullptr, outputs.Text(), outputs.Flag()); });
    return outputs.Describe(hr);
}

std::string GetSelected(CWorld& world, CFault* pFault)
{
    const auto property = Security(world);
    const CBstr profile(szSecurityProfile);
    BOOL bSelected = 77;
    const HRESULT hr = Call(pFault, [&] { return property->Dot11ExtUIPropertyGetSelected(profile.Get(), nullptr, &bSelected); });
    return ResultText(hr) + " " + std::to_string(bSelected);
}

std::string GetDisplayInfo(CWorld& world, CFault* pFault)
{
    const auto property = Security(world);
    return Entries(*property.Get(), pFault, CBstr(szSecurityProfile).Get());
}

std::string SetDisplayInfo(CWorld& world, CFault* pFault)
{
    const auto property = Security(world);
    const CBstr profile(szSecurityProfile);
    Dot11ExtUIPropertyEntry entry = {4, 0, nullptr};
    CProfileOutputs outputs;
    const HRESULT hr = Call(pFault,
                            [&] {
                                return property->Dot11ExtUIPropertySetDisplayInfo(0, profile.Get(), nullptr, &entry,
                                                                                  outputs.Text(), outputs.Flag());
                            });
    return outputs.Describe(hr);
}

#define DOCUMENTS                                                                                                                \
    "CoCreateInstance|CreateDocument|loadXML|get_.*|selectSingleNode|createElement|appendChild|insertBefore|put_text|"           \
    "SysAllocString"
// A new profile that holds what could be written, or none because no document could be made.
#define WRITTEN "S_OK 1 (\\(null\\)|<CCX.*>)"

const Operation propertyOperations[] = {
    // A text that could not be allocated is left null.
    {"security_Initialize",
     Kind::Plain,
     Initialize,
     {{"operator new", "E_OUTOFMEMORY, S_OK 0 0 null traced invalid"},
      {"SysAllocString", "S_OK, S_OK 3 2( WEP| TKIP| AES| \\(null\\)){3} traced invalid"}}},
    {"security_GetName", Kind::Plain, Name<Security>, {{"SysAllocString", "E_OUTOFMEMORY \\(null\\)"}}},
    {"security_GetSelected",
     Kind::Plain,
     GetSelected,
     {{"operator new", OUT_OF_MEMORY("77")},
      {"SysAllocStringLen", OUT_OF_MEMORY("77") "|S_OK 1 traced invalid"},
      {DOCUMENTS, "S_OK 0|S_OK 1 traced invalid"}}},
    {"security_SetSelected",
     Kind::Plain,
     SetSelected<Security, szSecurityProfile>,
     {{"operator new", OUT_OF_MEMORY("0 kept")},
      {"SysAllocStringLen", OUT_OF_MEMORY("0 kept") "|" WRITTEN},
      {DOCUMENTS, WRITTEN}}},
    {"security_GetDisplayInfo",
     Kind::Plain,
     GetDisplayInfo,
     {{"operator new", OUT_OF_MEMORY("77 77 kept")},
      {"SysAllocStringLen", OUT_OF_MEMORY("77 77 kept") "|S_OK 3 2 WEP TKIP AES traced invalid"},
      {DOCUMENTS, "S_OK 3 1 WEP TKIP AES|S_OK 3 2 WEP TKIP AES traced invalid"}}},
    {"security_SetDisplayInfo",
     Kind::Plain,
     SetDisplayInfo,
     {{"operator new", OUT_OF_MEMORY("0 kept")},
      {"SysAllocStringLen", OUT_OF_MEMORY("0 kept") "|" WRITTEN},
      {DOCUMENTS, WRITTEN}}},
    {"connection_GetName",
     Kind::Plain,
     Name<Connection>,
     {{"SysAllocString", "E_OUTOFMEMORY \\(null\\)"}, {"LoadStringW", "S_OK "}}},
    {"connection_SetSelected",
     Kind::Plain,
     SetSelected<Connection, szConnectionProfile>,
     {{"operator new", OUT_OF_MEMORY("0 kept")},
      {"SysAllocStringLen", OUT_OF_MEMORY("0 kept") "|" WRITTEN "( traced invalid)?"},
      {DOCUMENTS, WRITTEN "( traced invalid)?"}}},
};
} // namespace

std::span<const Operation> PropertyOperations()
{
    return propertyOperations;
}
} // namespace tests::walk
