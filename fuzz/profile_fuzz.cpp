// Reading and writing back what profiles hold: the security choice, the connection options, the bands.
#include "fuzz/FuzzText.h"

#include "profile/CCXConnectionSettings.h"
#include "profile/CCXSecuritySettings.h"
#include "tests/support/BandsRewrite.h"

namespace
{
// The record as a profile.
template <class Settings>
CBstr Written(const Settings& settings)
{
    CBstr bstrProfile;
    *bstrProfile.Put() = settings.Serialise();
    Require(bstrProfile && IsWellFormed(bstrProfile.Get()), "what is written is well-formed");
    return bstrProfile;
}

void TrySecurity(const CWideString& text)
{
    const CBstr bstrFirst = Written(CCXSecuritySettings(text.c_str()));
    Require(Written(CCXSecuritySettings(bstrFirst.Get())).View() == bstrFirst.View(), "a second writing changes nothing");
}

void TryConnection(const CWideString& text)
{
    CCXConnectionSettings settings(text.c_str());
    // The first writing brings defaults and the one name of the SSID, which read back as they are.
    const CBstr bstrSecond = Written(CCXConnectionSettings(Written(settings).Get()));
    Require(Written(CCXConnectionSettings(bstrSecond.Get())).View() == bstrSecond.View(),
            "from the second writing on nothing changes");
    settings.SetDefaults();
    Require(settings.IsValid(), "the defaults are valid whatever was read");
}

// Everything but the connectivity section, as the document component writes it.
CWideString Remainder(const WCHAR* szProfile)
{
    CXmlDocument document;
    if (!document.Load(szProfile))
        return {};
    const CXmlNode section = document.Root().Select(OLESTR("/WLANProfile/MSM"));
    section.Remove(section.Select(OLESTR("/WLANProfile/MSM/connectivity")));
    return CWideString(document.Xml().View());
}

void TryBands(const CWideString& text, WlanProfileBands choice)
{
    CWideString profile = text;
    const bool bWritten = tests::RewriteBands(profile, choice);
    const CWideString remainder = Remainder(text.c_str());
    // A declaration of the profile's own may be what was taken out.
    if (!bWritten || remainder.find(OLESTR(" xmlns=\"\"")) != CWideString::npos)
        return;
    auto bands = bandsNotRead;
    Require(ReadProfileBands(profile.c_str(), &bands) && bands == choice, "the choice reads back");
    Require(Remainder(profile.c_str()) == remainder, "everything else is as it was");
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t cbData)
{
    PrepareProcess();
    const CWideString text = TextFrom(pData, cbData);
    TrySecurity(text);
    TryConnection(text);
    for (const auto choice : {bands24GHz, bands5GHz, bandsBoth})
        TryBands(text, choice);
    return 0;
}
