// Random operations in random order on live objects, with random texts, contexts and null pointers: a host that does
// everything wrong that an interface allows.
#include "fuzz/FuzzText.h"

#include "extui/SecurityPropertyInfo.h"
#include "public/Dot11ExtUI.h"
#include "values/ComRef.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <array>
#include <functional>
#include <vector>

namespace
{
void Call(IDot11ExtUIProperty& property, unsigned uOperation, FuzzedDataProvider& data)
{
    const auto bytes = data.ConsumeRandomLengthString(200);
    CBstr bstrProfile;
    if (data.ConsumeBool())
        bstrProfile = CBstr(TextFrom(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()).c_str());
    std::array<BYTE, ConnectionContextOffset::end> context{};
    data.ConsumeData(context.data(), context.size());
    void* const pContext = data.ConsumeBool() ? context.data() : nullptr;
    Dot11ExtUIPropertyEntry entry = {data.ConsumeIntegral<DWORD>(), data.ConsumeIntegral<ULONG>(), nullptr};
    const bool bNull = data.ConsumeIntegralInRange(0, 9) == 0;

    CBstr bstrText;
    BOOL bFlag = FALSE;
    ULONG uFirst = 0;
    ULONG uSecond = 0;
    Dot11ExtUIPropertyEntry* pEntries = nullptr;
    BSTR* const pbstrText = bNull ? nullptr : bstrText.Put();
    BOOL* const pbFlag = bNull ? nullptr : &bFlag;
    ULONG* const puFirst = bNull ? nullptr : &uFirst;
    const std::function<void()> operations[] = {
        [&] { property.Dot11ExtUIPropertyGetName(pbstrText); },
        [&] { property.Dot11ExtUIPropertyGetSelected(bstrProfile.Get(), pContext, pbFlag); },
        [&] { property.Dot11ExtUIPropertySetSelected(bstrProfile.Get(), pContext, pbstrText, pbFlag); },
        [&] { property.Dot11ExtUIPropertyHasDialog(pbFlag); },
        [&] { property.Dot11ExtUIPropertyGetDisplayInfo(0, bstrProfile.Get(), pContext, puFirst, &uSecond, &pEntries); },
        [&] { property.Dot11ExtUIPropertySetDisplayInfo(0, bstrProfile.Get(), pContext, &entry, pbstrText, pbFlag); },
        [&] { property.Dot11ExtUIPropertyGetFlags(puFirst, &uSecond); },
    };
    operations[uOperation]();
    // What came out is a text of its own, or nothing: the holder frees it.
    Require(!bstrText || uOperation == 0 || IsWellFormed(bstrText.Get()), "a modified profile is well-formed");
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
            Call(*properties[nProperty].Get(), uOperation, data);
    }
    properties.clear();
    Require(DllCanUnloadNow() == S_OK, "nothing is left");
    return 0;
}
