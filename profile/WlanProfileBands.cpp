#include "profile/WlanProfileBands.h"

#include "profile/XmlDocument.h"

#include <memory>

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

void EraseFirst(CWideString& text, CWideView part, std::size_t nFrom = 0)
{
    const auto nFound = text.find(part, nFrom);
    if (nFound != CWideString::npos)
        text.erase(nFound, part.size());
}

// The new section as the writer gives it below a default namespace: with the declaration that takes it out of it.
CWideString SectionOutsideNamespace(WlanProfileBands bands)
{
    CWideString section = OLESTR("<connectivity xmlns=\"\">");
    for (const auto& phyType : phyTypes)
    {
        if ((bands & phyType.band) != 0)
            section.append(OLESTR("<phyType>")).append(phyType.szText).append(OLESTR("</phyType>"));
    }
    return section.append(OLESTR("</connectivity>"));
}

// The writer gives an element without namespace an empty declaration where an ancestor declares a default namespace, and
// the WLAN service refuses a profile whose section is outside the profile's namespace. The first declaration of the text
// goes; where the profile brought one of its own before the new section, the section's goes as well.
void EraseEmptyNamespaces(CWideString& text, WlanProfileBands bands)
{
    EraseFirst(text, emptyNamespace);
    const auto nSection = text.find(SectionOutsideNamespace(bands));
    if (nSection != CWideString::npos)
        EraseFirst(text, emptyNamespace, nSection);
}
} // namespace

bool ReadProfileBands(const WCHAR* szProfile, WlanProfileBands* pBands)
{
    CXmlDocument document(CXmlDocument::WhiteSpace::Drop);
    if (!document.Load(szProfile))
        return false;
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
    const CWideString text = connectivity.Text().value_or(CWideString());
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
    EraseEmptyNamespaces(text, bands);
    auto rewritten = std::make_unique<WCHAR[]>(bstrXml.View().size() + 1);
    text.copy(rewritten.get(), text.size());
    delete[] * pszProfile;
    *pszProfile = rewritten.release();
    return bWritten;
}
