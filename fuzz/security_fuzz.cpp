// Reading and writing back the security choice.
#include "fuzz/FuzzText.h"

#include "profile/CCXSecuritySettings.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t cbData)
{
    PrepareProcess();
    const CCXSecuritySettings settings(TextFrom(pData, cbData).c_str());
    const CBstr bstrFirst = Written(settings);
    Require(bstrFirst && IsWellFormed(bstrFirst.Get()), "what is written is well-formed");

    Require(Written(CCXSecuritySettings(bstrFirst.Get())).View() == bstrFirst.View(), "a second writing changes nothing");
    return 0;
}
