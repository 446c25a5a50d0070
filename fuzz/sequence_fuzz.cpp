// Random operations in random order on live objects, with random texts, contexts and null pointers: a host that does
// everything wrong that an interface allows.
#include "fuzz/FuzzDocument.h"

#include "extui/SecurityPropertyInfo.h"
#include "public/Dot11ExtUI.h"
#include "values/ComRef.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <memory>
#include <vector>

namespace
{
struct Arguments
{
    CBstr bstrProfile;
    std::array<BYTE, ConnectionContextOffset::end> context{};
    void* pContext;
    CBstr bstrModified;
    BOOL bFlag = FALSE;
    ULONG uFirst = 0;
    ULONG uSecond = 0;
    Dot11ExtUIPropertyEntry* pEntries = nullptr;
    Dot11ExtUIPropertyEntry entry{};
    bool bNullOutputs;
};

Arguments Choose(FuzzedDataProvider& data)
{
    Arguments arguments;
    const auto bytes = data.ConsumeRandomLengthString(200);
    if (data.ConsumeBool())
        arguments.bstrProfile = CBstr(TextFrom(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()).c_str());
    data.ConsumeData(arguments.context.data(), arguments.context.size());
    arguments.pContext = data.ConsumeBool() ? arguments.context.data() : nullptr;
    arguments.entry = {data.ConsumeIntegral<DWORD>(), data.ConsumeIntegral<ULONG>(), nullptr};
    arguments.bNullOutputs = data.ConsumeIntegralInRange(0, 9) == 0;
    return arguments;
}

void Call(IDot11ExtUIProperty& property, unsigned uOperation, Arguments arguments)
{
    const bool bNull = arguments.bNullOutputs;
    BSTR* pbstrModified = bNull ? nullptr : arguments.bstrModified.Put();
    BOOL* pbFlag = bNull ? nullptr : &arguments.bFlag;
    const BSTR bstrProfile = arguments.bstrProfile.Get();
    switch (uOperation)
    {
    case 0:
        property.Dot11ExtUIPropertyGetName(pbstrModified);
        break;
    case 1:
        property.Dot11ExtUIPropertyGetSelected(bstrProfile, arguments.pContext, pbFlag);
        break;
    case 2:
        property.Dot11ExtUIPropertySetSelected(bstrProfile, arguments.pContext, pbstrModified, pbFlag);
        break;
    case 3:
        property.Dot11ExtUIPropertyHasDialog(pbFlag);
        break;
    case 4:
        property.Dot11ExtUIPropertyGetDisplayInfo(arguments.uFirst, bstrProfile, arguments.pContext,
                                                  bNull ? nullptr : &arguments.uFirst, &arguments.uSecond, &arguments.pEntries);
        break;
    case 5:
        property.Dot11ExtUIPropertySetDisplayInfo(0, bstrProfile, arguments.pContext, &arguments.entry, pbstrModified, pbFlag);
        break;
    default:
        property.Dot11ExtUIPropertyGetFlags(bNull ? nullptr : &arguments.uFirst, &arguments.uSecond);
        break;
    }
    // What came out is a text of its own, or nothing: the holder frees it.
    Require(!arguments.bstrModified || IsWellFormed(arguments.bstrModified.Get()) || uOperation == 0,
            "a modified profile is well-formed");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t cbData)
{
    PrepareProcess();
    FuzzedDataProvider data(pData, cbData);
    CComRef<IClassFactory> factory;
    Require(DllGetClassObject(CLSID_ExtUI, IID_IClassFactory, factory.PutVoid()) == S_OK, "there is a factory");
    std::vector<CComRef<IDot11ExtUIProperty>> properties;
    while (data.remaining_bytes() > 0)
    {
        const auto uOperation = data.ConsumeIntegralInRange(0u, 9u);
        if (uOperation >= 8 || properties.empty())
        {
            CComRef<IDot11ExtUIProperty> property;
            const bool bSecurity = data.ConsumeBool();
            factory->CreateInstance(nullptr, bSecurity ? IID_ICCXExtUIKey : IID_ICCXExtUICon, property.PutVoid());
            if (bSecurity && data.ConsumeBool())
                static_cast<ICCXExtUIKey*>(property.Get())->Initialize(&SecurityPropertyInfos()[0]);
            properties.push_back(property);
            continue;
        }
        const auto nProperty = data.ConsumeIntegralInRange<std::size_t>(0, properties.size() - 1);
        if (uOperation == 7)
            properties.erase(properties.begin() + static_cast<std::ptrdiff_t>(nProperty));
        else
            Call(*properties[nProperty].Get(), uOperation, Choose(data));
    }
    properties.clear();
    Require(DllCanUnloadNow() == S_OK, "nothing is left");
    return 0;
}
