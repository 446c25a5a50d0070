// The profile operations of both properties, and the rewriting of the bands.
#include "profile/WlanProfileBands.h"
#include "tests/benchmarks/Bare.h"
#include "tests/benchmarks/Extension.h"
#include "tests/benchmarks/Rows.h"

#include <memory>

namespace bench
{
namespace
{
// The smallest texts hold the security elements alone, the others those of the connection as well; the rest is what others have
// put there.
constexpr std::size_t cchSmallest = 200;
constexpr const WCHAR* szConnectionElements = OLESTR(
    "<RadioMeasurement><enabled><MaxOffChannelTimeMs>50</MaxOffChannelTimeMs><MinOnChannelTimeMs>400</MinOnChannelTimeMs>"
    "</enabled></RadioMeasurement><Rapido>true</Rapido><AdvancedRoaming><enabled><RoamingOption>3</RoamingOption></enabled>"
    "</AdvancedRoaming><KeepAliveTimer><Period>30</Period></KeepAliveTimer><Diagnostics><AuthorizedProfile>true"
    "</AuthorizedProfile><Channel><SSID><Name>Diagnostic Channel</Name></SSID><EnableClientReporting>true"
    "</EnableClientReporting></Channel></Diagnostics>");
constexpr const WCHAR* szForeignElement = OLESTR(
    "<Vendor><Entry Kind=\"site\">Building 7, second floor: the access points of the stairs are lent to the laboratory until "
    "the end of the works on its own, and answer on both bands.</Entry></Vendor>");

CWideString ProfileText(std::size_t cch, const WCHAR* szAuthentication)
{
    CWideString text(OLESTR("<CCX xmlns=\"http://www.korvane.com/CCX\"><authenticatingNetwork><"));
    text.append(szAuthentication).append(OLESTR("><encryption>TKIP</encryption></")).append(szAuthentication);
    text.append(OLESTR("></authenticatingNetwork>")).append(cch > cchSmallest ? szConnectionElements : OLESTR(""));
    while (cch > cchSmallest && text.size() < cch)
        text += szForeignElement;
    return text + OLESTR("</CCX>");
}

// What the readers look for in these texts, and the writers put into theirs. Each token is asked for up to the one that is there.
constexpr Look securityLooks[] = {
    {0, OLESTR("//CCX/openNetwork"), false},
    {0, OLESTR("//CCX/authenticatingNetwork"), false},
    {1, OLESTR("open"), false},
    {1, OLESTR("cckm"), false},
    {2, OLESTR("encryption"), true},
};
constexpr Look otherSecurityLooks[] = {
    {0, OLESTR("//CCX/openNetwork"), false},
    {0, OLESTR("//CCX/authenticatingNetwork"), false},
    {1, OLESTR("open"), false},
    {1, OLESTR("cckm"), false},
    {1, OLESTR("wpa"), false},
    {1, OLESTR("wpa2"), false},
    {2, OLESTR("encryption"), true},
};
constexpr Element securityElements[] = {
    {0, OLESTR("authenticatingNetwork"), nullptr},
    {1, OLESTR("cckm"), nullptr},
    {2, OLESTR("encryption"), OLESTR("TKIP")},
};
constexpr Look connectionLooks[] = {
    {0, OLESTR("//CCX/RadioMeasurement"), false},
    {1, OLESTR("disabled"), false},
    {1, OLESTR("enabled"), false},
    {2, OLESTR("disableLocationBasedServices"), false},
    {2, OLESTR("MaxOffChannelTimeMs"), true},
    {2, OLESTR("MinOnChannelTimeMs"), true},
    {0, OLESTR("//CCX/KeepAliveTimer"), false},
    {1, OLESTR("Period"), true},
    {0, OLESTR("//CCX/Diagnostics/Channel"), false},
    {1, OLESTR("SSID/Hex"), false},
    {1, OLESTR("SSID/Name"), true},
    {1, OLESTR("EnableClientReporting"), true},
    {0, OLESTR("//CCX/Diagnostics/AuthorizedProfile"), true},
    {0, OLESTR("//CCX/Rapido"), true},
    {0, OLESTR("//CCX/AdvancedRoaming"), false},
    {1, OLESTR("disabled"), false},
    {1, OLESTR("enabled"), false},
    {2, OLESTR("RoamingOption"), true},
};
constexpr std::size_t nDefaultElements = 8; // what is written of a text without the connection's elements
constexpr Element connectionElements[] = {
    {0, OLESTR("RadioMeasurement"), nullptr},
    {1, OLESTR("enabled"), nullptr},
    {2, OLESTR("MaxOffChannelTimeMs"), OLESTR("50")},
    {2, OLESTR("MinOnChannelTimeMs"), OLESTR("400")},
    {0, OLESTR("Rapido"), OLESTR("true")},
    {0, OLESTR("AdvancedRoaming"), nullptr},
    {1, OLESTR("enabled"), nullptr},
    {2, OLESTR("RoamingOption"), OLESTR("3")},
    {0, OLESTR("KeepAliveTimer"), nullptr},
    {1, OLESTR("Period"), OLESTR("30")},
    {0, OLESTR("Diagnostics"), nullptr},
    {1, OLESTR("AuthorizedProfile"), OLESTR("true")},
    {1, OLESTR("Channel"), nullptr},
    {2, OLESTR("SSID"), nullptr},
    {3, OLESTR("Name"), OLESTR("Diagnostic Channel")},
    {2, OLESTR("EnableClientReporting"), OLESTR("true")},
};

void WriteHeadLines(const WCHAR* szHeader, const WCHAR* szText)
{
    Line(szHeader);
    Line(OLESTR("auth element: (%xh) %s\n"), 0x80000001u, OLESTR("CCKM"));
    Line(OLESTR("bstrIHVProfile: %s\n"), szText);
}
void WriteModifiedLines(const CBstr& modified)
{
    Line(OLESTR("*pbIsModified: %s\n"), OLESTR("TRUE"));
    Line(OLESTR("*bstrModifiedIHVProfile: %s\n"), modified.Get());
}
// Whether a record is valid is found by one writing and one reading of what was written.
void AskValidity()
{
    Read(Write(securityElements).Get(), securityLooks);
}

bool IsChangedBySelecting(IDot11ExtUIProperty& property, BSTR bstrText)
{
    CBstr modified;
    BOOL bIsModified = FALSE;
    property.Dot11ExtUIPropertySetSelected(bstrText, nullptr, modified.Put(), &bIsModified);
    return bIsModified && modified;
}

bool IsDefaultTkip(const Extension& extension, BSTR bstrText)
{
    ULONG cEntries = 0;
    ULONG uDefault = 0;
    Dot11ExtUIPropertyEntry* pEntries = nullptr;
    extension.security->Dot11ExtUIPropertyGetDisplayInfo(0, bstrText, nullptr, &cEntries, &uDefault, &pEntries);
    return uDefault == 1;
}

// One operation: what a host calls, whose answer is looked at, and the same documents and lines without the module.
struct Operation
{
    const char* szName;
    const WCHAR* szAuthentication; // of the text that it is asked about
    bool (*module)(const Extension& extension, BSTR bstrText);
    void (*bare)(CWideView text);
};
constexpr Operation operations[] = {
    {"security GetSelected", OLESTR("cckm"),
     [](const Extension& extension, BSTR bstrText)
     {
         BOOL bIsSelected = FALSE;
         extension.security->Dot11ExtUIPropertyGetSelected(bstrText, nullptr, &bIsSelected);
         return bIsSelected == TRUE;
     },
     [](CWideView text)
     {
         WriteHeadLines(OLESTR("\nCExtUIKey::Dot11ExtUIPropertyGetSelected\n"), text.data());
         Read(text.data(), securityLooks);
         AskValidity();
         Line(OLESTR("*pfIsSelected: %s\n"), OLESTR("TRUE"));
     }},
    {"security SetSelected", OLESTR("wpa2"),
     [](const Extension& extension, BSTR bstrText) { return IsChangedBySelecting(*extension.security.Get(), bstrText); },
     [](CWideView text)
     {
         WriteHeadLines(OLESTR("\nCExtUIKey::Dot11ExtUIPropertySetSelected\n"), text.data());
         Read(text.data(), otherSecurityLooks);
         AskValidity();
         WriteModifiedLines(Write(securityElements));
     }},
    {"security GetDisplayInfo", OLESTR("cckm"), IsDefaultTkip,
     [](CWideView text)
     {
         WriteHeadLines(OLESTR("\nCExtUIKey::Dot11ExtUIPropertyGetDisplayInfo\n"), text.data());
         Read(text.data(), securityLooks);
         Line(OLESTR("profile cipher: (%Xh) %s\n"), 2u, OLESTR("TKIP"));
         AskValidity();
         Line(OLESTR("Set *ppDot11ExtUIProperty to %p\n"), text.data());
         Line(OLESTR("Set *pcEntries to %u\n"), 3u);
         Line(OLESTR("*puDefaultSelection: %d\n"), 1);
     }},
    {"security SetDisplayInfo", OLESTR("wpa2"),
     [](const Extension& extension, BSTR bstrText)
     {
         const CBstr shown(OLESTR("TKIP"));
         Dot11ExtUIPropertyEntry entry = {2, 0, shown.Get()};
         CBstr modified;
         BOOL bIsModified = FALSE;
         extension.security->Dot11ExtUIPropertySetDisplayInfo(0, bstrText, nullptr, &entry, modified.Put(), &bIsModified);
         return bIsModified && modified;
     },
     [](CWideView text)
     {
         WriteHeadLines(OLESTR("\nCExtUIKey::Dot11ExtUIPropertySetDisplayInfo\n"), text.data());
         Line(OLESTR("pDot11ExtUIProperty: %p\n"), text.data());
         Line(OLESTR("pDot11ExtUIProperty->dwDataKey                : (%Xh), %s\n"), 2u, OLESTR("TKIP"));
         Line(OLESTR("pDot11ExtUIProperty->bstrDisplayText          : %s\n"), OLESTR("TKIP"));
         Line(OLESTR("pDot11ExtUIProperty->dot11ExtUIDisplayInfoType: %Xh\n"), 0u);
         Read(text.data(), otherSecurityLooks);
         WriteModifiedLines(Write(securityElements));
     }},
    {"connection SetSelected", OLESTR("cckm"),
     [](const Extension& extension, BSTR bstrText) { return IsChangedBySelecting(*extension.connection.Get(), bstrText); },
     [](CWideView text)
     {
         Line(OLESTR("bstrIHVProfile (IN): %s\n"), text.data());
         Read(text.data(), connectionLooks);
         const std::span<const Element> elements(connectionElements);
         const CBstr modified = Write(text.size() > cchSmallest ? elements : elements.first(nDefaultElements));
         Line(OLESTR("bstrModifiedIHVProfile (OUT): %s\n"), modified.Get());
     }},
};

Sides SidesOf(const Operation& operation, std::size_t cch)
{
    const auto pExtension = std::make_shared<Extension>();
    const auto pText = std::make_shared<CBstr>(CWideView(ProfileText(cch, operation.szAuthentication)));
    // One that does not load is quickly done with.
    Require(IsDefaultTkip(*pExtension, pText->Get()), "a text does not load");
    return {Timed([=] { Require(operation.module(*pExtension, pText->Get()), operation.szName); }),
            Timed([=] { operation.bare(pText->View()); })};
}

// One text, against as many characters in texts of which each has a hundredth.
Sides SidesOfSize(const Operation& operation)
{
    const auto part = SidesOf(operation, 50'000).module;
    const auto hundred = [=]
    {
        for (int i = 0; i < 100; ++i)
            part();
    };
    return {SidesOf(operation, 5'000'000).module, Timed(hundred)};
}

// The bands of a wireless profile rewritten, against loading the same text and taking its form.
Sides BandSides(std::size_t cch)
{
    const CWideString text =
        OLESTR("<WLANProfile xmlns=\"http://www.microsoft.com/networking/WLAN/profile/v1\"><name>Office</name><MSM>"
               "<connectivity><phyType>b</phyType></connectivity><security><authEncryption/></security></MSM><IHV>") +
        ProfileText(cch, OLESTR("cckm")) + OLESTR("</IHV></WLANProfile>");
    const std::shared_ptr<WCHAR*> pszProfile(new WCHAR* {new WCHAR[text.size() + 1]()},
                                             [](WCHAR** psz)
                                             {
                                                 delete[] * psz;
                                                 delete psz;
                                             });
    text.copy(*pszProfile, text.size());
    return {Timed([=] { Require(WriteProfileBands(pszProfile.get(), bandsBoth), "band rewrite"); }),
            Timed(
                [=]
                {
                    const BareDocument document(*pszProfile);
                    CBstr xml;
                    document.document->get_xml(xml.Put());
                })};
}
} // namespace

std::vector<Row> ProfileRows()
{
    std::vector<Row> rows;
    for (const auto& operation : operations)
    {
        const auto add = [&](const char* szSize, std::size_t cch) {
            rows.push_back({std::string(operation.szName) + szSize, 1.10, true, [&, cch] { return SidesOf(operation, cch); }});
        };
        add(", 0.2 K", cchSmallest);
        add(", 1 K", 1'000);
        add(", 50 K", 50'000);
        rows.push_back(
            {std::string(operation.szName) + ", 5 M / 100 of 50 K", 1.3, false, [&] { return SidesOfSize(operation); }});
    }
    rows.push_back({"band rewrite, 3 K", 1.15, true, [] { return BandSides(3'000); }});
    rows.push_back({"band rewrite, 1 M", 1.15, false, [] { return BandSides(1'000'000); }});
    return rows;
}
} // namespace bench
