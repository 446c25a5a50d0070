// Reading and writing back the security choice.
#include "fuzz/FuzzText.h"

#include "profile/CCXSecuritySettings.h"

namespace
{
// What reading a written record gives: the open form has no cipher of its own, and what no table knows is not written.
CCXSecuritySettings Expected(const CCXSecuritySettings& settings)
{
    CCXSecuritySettings expected = settings;
    if (settings.auth == authOpen)
        expected.cipher = cipherNone;
    if (settings.auth == CCXSecuritySettings::invalid)
        expected.cipher = CCXSecuritySettings::invalid;
    return expected;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t cbData)
{
    PrepareProcess();
    const CCXSecuritySettings settings(TextFrom(pData, cbData).c_str());
    const CBstr bstrFirst = Written(settings);
    Require(bstrFirst && IsWellFormed(bstrFirst.Get()), "what is written is well-formed");

    const CCXSecuritySettings readBack(bstrFirst.Get());
    const CCXSecuritySettings expected = Expected(settings);
    Require(readBack.auth == expected.auth && readBack.cipher == expected.cipher, "what is written reads back");
    Require(Written(readBack).View() == bstrFirst.View(), "a second writing changes nothing");
    return 0;
}
