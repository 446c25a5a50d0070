#include "profile/WlanProfileBands.h"

#include <memory>
#include <utility>

namespace
{
constexpr const WCHAR* szSectionPath = OLESTR("/WLANProfile/MSM");
constexpr const WCHAR* szConnectivityPath = OLESTR("/WLANProfile/MSM/connectivity");
constexpr const WCHAR* szSecurityPath = OLESTR("/WLANProfile/MSM/security");
constexpr const WCHAR* szConnectivityName = OLESTR("connectivity");
constexpr CWideView emptyNamespace = OLESTR(" xmlns=\"\"");

struct PhyType
{
    WlanProfileBands band;
    const WCHAR* szText;
};
// In the order in which they are written.
constexpr PhyType phyTypes[] = {
    {bands5GHz, OLESTR("a")},
    {bands24GHz, OLESTR("g")},
};

// Puts a new connectivity section for the choice before the security section. True when at least one band was written.
bool RewriteConnectivity(const CXmlDocument& document, const CXmlNode& root, WlanProfileBands bands)
{
    const CXmlNode section = root.Select(szSectionPath);
    if (const CXmlNode old = section.Select(szConnectivityPath))
        section.Remove(old);
    const CXmlNode security = root.Select(szSecurityPath);
    const CXmlNode connectivity = section.InsertBefore(document.CreateElement(szConnectivityName), security);

    bool bWritten = false;
    for (const auto& phyType : phyTypes)
    {
        if ((bands & phyType.band) == 0)
            continue;
        const CXmlNode element = document.AppendElement(connectivity, OLESTR("phyType"));
        element.SetText(phyType.szText);
        bWritten = bWritten || element;
    }
    return bWritten;
}

// The writer gives an element without namespace an empty declaration where an ancestor declares a default namespace, and
// the WLAN service refuses a profile whose section is outside the profile's namespace. The first declaration of the text
// goes, and no other: those behind it are the profile's own.
void EraseEmptyNamespace(CWideString& text)
{
    const auto nFound = text.find(emptyNamespace);
    if (nFound != CWideString::npos)
        text.erase(nFound, emptyNamespace.size());
}
} // namespace

bool ReadProfileBands(const WCHAR* szProfile, WlanProfileBands* pBands)
{
    CXmlDocument document;
    return document.Load(szProfile) && ReadProfileBands(document, pBands);
}

bool ReadProfileBands(const CXmlDocument& document, WlanProfileBands* pBands)
{
    const CXmlNode root = document.Root();
    if (!root)
        return false;
    const CXmlNode connectivity = root.Select(szConnectivityPath);
    if (!connectivity)
    {
        *pBands = bandsNotRead;
        return true;
    }
    const auto bHasChildren = connectivity.HasChildren();
    if (!bHasChildren)
        return false;
    if (!*bHasChildren)
    {
        *pBands = bandsNotRead;
        return true;
    }
    const CWideString text = connectivity.TextOfElements().value_or(CWideString());
    if (text == OLESTR("ag") || text == OLESTR("agn"))
    {
        *pBands = bandsBoth;
        return true;
    }
    // Any other order or company of the two letters counts as the 2.4 GHz band.
    bool bFound = false;
    for (const auto& phyType : phyTypes)
    {
        if (text.find(phyType.szText) == CWideString::npos)
            continue;
        *pBands = phyType.band;
        bFound = true;
    }
    return bFound;
}

bool WriteProfileBands(WCHAR** pszProfile, WlanProfileBands bands)
{
    CXmlDocument document;
    if (!document.Load(*pszProfile))
        return false;
    const CXmlNode root = document.Root();
    if (!root)
        return false;
    const bool bWritten = RewriteConnectivity(document, root, bands);

    const CBstr bstrXml = document.Xml();
    if (!bstrXml)
        return false;
    CWideString text(bstrXml.View());
    EraseEmptyNamespace(text);
    auto rewritten = std::make_unique<WCHAR[]>(bstrXml.View().size() + 1);
    text.copy(rewritten.get(), text.size());
    const std::unique_ptr<WCHAR[]> old(std::exchange(*pszProfile, rewritten.release()));
    return bWritten;
}
