#include "profile/IhvProfile.h"

CWideString WithoutIndentation(CWideView xml)
{
    CWideString text;
    const auto trimmed = [&] { return CWideView(text).substr(0, text.find_last_not_of(OLESTR(" \t\r\n")) + 1); };
    for (const WCHAR ch : xml)
    {
        if (ch == OLESTR('<') && trimmed().ends_with(OLESTR('>')))
            text.resize(trimmed().size());
        text += ch;
    }
    text.resize(trimmed().size());
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
