// What every IHV profile has in common: the vendor's part of a wireless profile, an XML document with the root CCX.
#pragma once

#include "profile/XmlDocument.h"

// The text from which every written profile starts.
inline constexpr const WCHAR* szDefaultIhvProfile = OLESTR("<CCX/>");

// The namespace that a written profile declares on its root. Readers do not look at it, so that profiles written before
// it was settled stay readable.
inline constexpr const WCHAR* szCcxNamespaceUri = OLESTR("http://www.korvane.com/CCX");

// Loads a text for reading and gives its root element; empty for a null, empty or unreadable text.
CXmlNode OpenIhvProfile(const WCHAR* szIHVProfile);

// The text form of a profile without white space between two tags or behind the last one: some versions of the document
// component indent what they write. No element here has both text and elements in it, so it was never anybody's content.
CWideString WithoutIndentation(CWideView xml);

// A profile being written: the default profile, to which the caller appends its elements.
class CIhvProfileWriter
{
public:
    // Empty (false) when no document could be made.
    CIhvProfileWriter();

    explicit operator bool() const
    {
        return static_cast<bool>(m_root);
    }
    const CXmlNode& Root() const
    {
        return m_root;
    }
    // Appends an element, with a text when one is given; empty when that fails or the parent is empty.
    CXmlNode Append(const CXmlNode& parent, const WCHAR* szName, const WCHAR* szText = nullptr) const;

    // Declares the namespace and gives the text form of the root; null on failure.
    CBstr Finish() const;

private:
    CXmlDocument m_document;
    CXmlNode m_root;
};
