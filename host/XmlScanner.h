// Where the pieces of an XML text begin and end. The scanner only finds positions: whether the text is well-formed, and
// that it has no document type, is the document component's judgement, made before.
#pragma once

#include "values/WideText.h"

#include <vector>

inline constexpr const WCHAR* xmlWhiteSpace = OLESTR(" \t\r\n");

enum class XmlTokenKind
{
    Text, // and everything else that is no tag
    StartTag,
    EmptyTag, // <name/>
    EndTag,
};

struct XmlToken
{
    XmlTokenKind kind = XmlTokenKind::Text;
    std::size_t nBegin = 0;
    std::size_t nEnd = 0;
    CWideView name; // of tags, with the prefix
};

class CXmlScanner
{
public:
    // The text is borrowed; names are views of it.
    explicit CXmlScanner(CWideView text) : m_text(text)
    {
    }

    // False at the end. Throws CHostError for a piece that does not end.
    bool Next(XmlToken& token);

private:
    void ScanMarkup(XmlToken& token) const;

    CWideView m_text;
    std::size_t m_nPosition = 0;
};

// An attribute, with its range from the white space before the name to behind the closing quote.
struct XmlAttribute
{
    CWideView name;
    CWideView value; // as written, references unresolved
    std::size_t nBegin = 0;
    std::size_t nEnd = 0;
};

// The attributes in the inner part of a tag or of an XML declaration (behind the name). Ends at the first piece that is
// no attribute.
std::vector<XmlAttribute> ScanAttributes(CWideView inner);

// The attributes of a start tag or empty tag.
std::vector<XmlAttribute> AttributesOf(CWideView text, const XmlToken& tag);

// The parts of a name before and behind the colon; the first is empty when there is none.
CWideView PrefixOf(CWideView name);
CWideView LocalNameOf(CWideView name);
