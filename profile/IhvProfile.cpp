#include "profile/IhvProfile.h"

CWideString WithoutIndentation(CWideView xml)
{
    CWideString text;
    text.reserve(xml.size());
    // Each piece is a tag with what follows it up to the next one.
    while (!xml.empty())
    {
        const CWideView piece = xml.substr(0, xml.find(OLESTR('<'), 1));
        xml.remove_prefix(piece.size());
        const CWideView trimmed = piece.substr(0, piece.find_last_not_of(OLESTR(" \t\r\n")) + 1);
        text += xml.empty() || trimmed.ends_with(OLESTR('>')) ? trimmed : piece;
    }
    return text;
}

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
