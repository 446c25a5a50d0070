#include "profile/IhvProfile.h"

#include <algorithm>

namespace
{
// Some versions of the document component indent what they write. No element here has both text and elements in it, so
// white space between two tags was never anybody's content.
CWideString WithoutIndentation(CWideView xml)
{
    CWideString text;
    text.reserve(xml.size());
    while (!xml.empty())
    {
        const auto nTagEnd = std::min(xml.find(OLESTR('>')), xml.size() - 1) + 1;
        text += xml.substr(0, nTagEnd);
        xml.remove_prefix(nTagEnd);
        const auto nNext = std::min(xml.find_first_not_of(OLESTR(" \t\r\n")), xml.size());
        if (nNext == xml.size() || xml[nNext] == OLESTR('<'))
            xml.remove_prefix(nNext);
    }
    return text;
}
} // namespace

CXmlNode OpenIhvProfile(const WCHAR* szIHVProfile)
{
    if (!szIHVProfile || !*szIHVProfile)
        return {};
    CXmlDocument document;
    if (!document.Load(szIHVProfile))
        return {};
    return document.Root();
}

CIhvProfileWriter::CIhvProfileWriter()
{
    if (m_document.Load(szDefaultIhvProfile))
        m_root = m_document.Root();
}

CXmlNode CIhvProfileWriter::Append(const CXmlNode& parent, const WCHAR* szName, const WCHAR* szText) const
{
    CXmlNode element = m_document.AppendElement(parent, szName);
    if (szText)
        element.SetText(szText);
    return element;
}

CBstr CIhvProfileWriter::Finish() const
{
    m_root.SetAttribute(OLESTR("xmlns"), szCcxNamespaceUri);
    const CBstr bstrXml = m_root.Xml();
    return bstrXml ? CBstr(WithoutIndentation(bstrXml.View())) : CBstr();
}
