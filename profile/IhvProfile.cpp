#include "profile/IhvProfile.h"

CXmlNode OpenIhvProfile(const WCHAR* szIHVProfile)
{
    if (!szIHVProfile || szIHVProfile[0] == WCHAR{})
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
    return m_root.Xml();
}
