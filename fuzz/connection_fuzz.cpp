// Reading and writing back the connection options.
#include "fuzz/FuzzText.h"

#include "profile/CCXConnectionSettings.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t cbData)
{
    PrepareProcess();
    CCXConnectionSettings settings(TextFrom(pData, cbData).c_str());
    const CBstr bstrFirst = Written(settings);
    Require(bstrFirst && IsWellFormed(bstrFirst.Get()), "what is written is well-formed");
    // The first writing brings defaults and the one name of the SSID, which read back as they are.
    const CBstr bstrSecond = Written(CCXConnectionSettings(bstrFirst.Get()));
    Require(Written(CCXConnectionSettings(bstrSecond.Get())).View() == bstrSecond.View(),
            "from the second writing on nothing changes");
    settings.SetDefaults();
    Require(settings.IsValid(), "the defaults are valid whatever was read");
    return 0;
}
