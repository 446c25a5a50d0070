// Every slot of both properties, but the connection property's dialog.
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

// A new profile that is whole, or none because no document could be made, or nothing to change.
constexpr const char* szOtherProfiles = "S_OK (0 kept|1 \\(null\\)|1 <CCX.*>)";

CCXSecurityPropertyInfo& Info()
{
    return SecurityPropertyInfos()[0];
}

CComRef<ICCXExtUIKey> Security(CWorld& world)
{
    auto property = world.Module().Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
    EXPECT_EQ(S_OK, property->Initialize(&Info()));
    return property;
}

CComRef<ICCXExtUICon> Connection(CWorld& world)
{
    return world.Module().Create<ICCXExtUICon>(IID_ICCXExtUICon);
}

const WCHAR* ProfileFor(const CComRef<ICCXExtUIKey>&)
{
    return szSecurityProfile;
}

const WCHAR* ProfileFor(const CComRef<ICCXExtUICon>&)
{
    return szConnectionProfile;
}

std::string Initialize(CWorld& world, CFault* pFault)
{
    const auto property = world.Module().Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
    const HRESULT hr = Call(pFault, [&] { return property->Initialize(&Info()); });
    // Whatever became of it, the property is there to be asked.
    ULONG cEntries = 77;
    Dot11ExtUIPropertyEntry* pEntries = nullptr;
    property->Dot11ExtUIPropertyGetDisplayInfo(0, nullptr, nullptr, &cEntries, nullptr, &pEntries);
    std::string outcome = ResultText(hr) + " " + std::to_string(cEntries);
    for (ULONG i = 0; i < cEntries; ++i)
        outcome += pEntries[i].bstrDisplayText ? " " + Narrow(pEntries[i].bstrDisplayText) : " (null)";
    return outcome;
}

template <auto property>
std::string Name(CWorld& world, CFault* pFault)
{
    const auto object = property(world);
    CBstr name;
    const HRESULT hr = Call(pFault, [&] { return object->Dot11ExtUIPropertyGetName(name.Put()); });
    return ResultText(hr) + " " + TextOf(name);
}

template <auto property>
std::string SetSelected(CWorld& world, CFault* pFault)
{
    const auto object = property(world);
    const CBstr profile(ProfileFor(object));
    CProfileOutputs outputs;
    const HRESULT hr = Call(
        pFault, [&]
        { return object->Dot11ExtUIPropertySetSelected(profile.Get(), world.Office().Get(), outputs.Text(), outputs.Flag()); });
    return outputs.Describe(hr);
}

std::string SecurityShowDialog(CWorld& world, CFault* pFault)
{
    const auto property = Security(world);
    CProfileOutputs outputs;
    const HRESULT hr =
        Call(pFault,
             [&] { return property->Dot11ExtUIPropertyShowDialog(nullptr, nullptr, nullptr, outputs.Text(), outputs.Flag()); });
    return outputs.Describe(hr);
}

template <auto property>
std::string GetSelected(CWorld& world, CFault* pFault)
{
    const auto object = property(world);
    const CBstr profile(szSecurityProfile);
    BOOL bSelected = 77;
    const HRESULT hr =
        Call(pFault, [&] { return object->Dot11ExtUIPropertyGetSelected(profile.Get(), world.Office().Get(), &bSelected); });
    return ResultText(hr) + " " + std::to_string(bSelected);
}

template <auto property>
std::string HasDialog(CWorld& world, CFault* pFault)
{
    const auto object = property(world);
    BOOL bHasDialog = 77;
    const HRESULT hr = Call(pFault, [&] { return object->Dot11ExtUIPropertyHasDialog(&bHasDialog); });
    return ResultText(hr) + " " + std::to_string(bHasDialog);
}

template <auto property>
std::string GetDisplayInfo(CWorld& world, CFault* pFault)
{
    const auto object = property(world);
    const CBstr profile(szSecurityProfile);
    ULONG cEntries = 77;
    ULONG uDefault = 77;
    Dot11ExtUIPropertyEntry* pEntries = nullptr;
    const HRESULT hr = Call(pFault,
                            [&] {
                                return object->Dot11ExtUIPropertyGetDisplayInfo(0, profile.Get(), world.Office().Get(), &cEntries,
                                                                                &uDefault, &pEntries);
                            });
    return ResultText(hr) + " " + std::to_string(cEntries) + " " + std::to_string(uDefault) + (pEntries ? " entries" : " null");
}

template <auto property>
std::string SetDisplayInfo(CWorld& world, CFault* pFault)
{
    const auto object = property(world);
    const CBstr profile(szSecurityProfile);
    const CBstr text(OLESTR("AES"));
    Dot11ExtUIPropertyEntry entry = {4, 0, text.Get()};
    CProfileOutputs outputs;
    const HRESULT hr = Call(pFault,
                            [&]
                            {
                                return object->Dot11ExtUIPropertySetDisplayInfo(0, profile.Get(), world.Office().Get(), &entry,
                                                                                outputs.Text(), outputs.Flag());
                            });
    return outputs.Describe(hr);
}

template <auto property>
std::string GetFlags(CWorld& world, CFault* pFault)
{
    const auto object = property(world);
    ULONG uQualified = 77;
    ULONG uKind = 77;
    const HRESULT hr = Call(pFault, [&] { return object->Dot11ExtUIPropertyGetFlags(&uQualified, &uKind); });
    return ResultText(hr) + " " + std::to_string(uQualified) + " " + std::to_string(uKind);
}

constexpr Operation propertyOperations[] = {
    // A text that could not be allocated is left null.
    {"security_Initialize", Kind::Plain, Initialize, "E_OUTOFMEMORY 0", "S_OK 3( WEP| TKIP| AES| \\(null\\)){3}"},
    {"security_GetName", Kind::Plain, Name<Security>, "E_OUTOFMEMORY (null)", ""},
    {"security_ShowDialog", Kind::Plain, SecurityShowDialog, "", ""},
    {"security_GetSelected", Kind::Plain, GetSelected<Security>, "E_OUTOFMEMORY 77", "S_OK [01]"},
    {"security_SetSelected", Kind::Plain, SetSelected<Security>, "E_OUTOFMEMORY 0 kept", szOtherProfiles},
    {"security_HasDialog", Kind::Plain, HasDialog<Security>, "", ""},
    {"security_GetDisplayInfo", Kind::Plain, GetDisplayInfo<Security>, "E_OUTOFMEMORY 77 77 null", "S_OK 3 [012] entries"},
    {"security_SetDisplayInfo", Kind::Plain, SetDisplayInfo<Security>, "E_OUTOFMEMORY 0 kept", szOtherProfiles},
    {"security_GetFlags", Kind::Plain, GetFlags<Security>, "", ""},
    {"connection_GetName", Kind::Plain, Name<Connection>, "E_OUTOFMEMORY (null)", "S_OK "},
    {"connection_GetSelected", Kind::Plain, GetSelected<Connection>, "", ""},
    {"connection_SetSelected", Kind::Plain, SetSelected<Connection>, "E_OUTOFMEMORY 0 kept", szOtherProfiles},
    {"connection_HasDialog", Kind::Plain, HasDialog<Connection>, "", ""},
    {"connection_GetDisplayInfo", Kind::Plain, GetDisplayInfo<Connection>, "", ""},
    {"connection_SetDisplayInfo", Kind::Plain, SetDisplayInfo<Connection>, "", ""},
    {"connection_GetFlags", Kind::Plain, GetFlags<Connection>, "", ""},
};
} // namespace

std::span<const Operation> PropertyOperations()
{
    return propertyOperations;
}
} // namespace tests::walk
