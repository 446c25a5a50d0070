#include "host/ProfileDocument.h"

#include "host/ComResults.h"
#include "host/HostError.h"
#include "host/KeyMask.h"
#include "host/ProfileText.h"
#include "host/XmlScanner.h"
#include "profile/DocumentPrologue.h"
#include "values/Bstr.h"
#include "values/ComRef.h"

#include <msxml2.h>

namespace
{
// {2933BF90-7B36-11D2-B20E-00C04F983E60}
constexpr CLSID documentClass = {0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

// Document components compare each attribute of an element with its others, and look up each name among all.
constexpr std::size_t maxAttributes = 4'000;
constexpr std::size_t maxMarks = 200'000; // tags and attributes, comments and instructions
} // namespace

void RequireModerateMarkup(CWideView text)
{
    // Each takes some characters, so that a text of the usual size needs no counting.
    constexpr std::size_t cchAttribute = 5;
    if (text.size() < maxAttributes * cchAttribute)
        return;
    std::size_t nMarks = 0;
    CXmlScanner scanner(text);
    for (XmlToken token; Naming("not well-formed XML", [&] { return scanner.Next(token); });)
    {
        const std::size_t nAttributes = token.kind != XmlTokenKind::Text ? AttributesOf(text, token).size() : 0;
        if (nAttributes > maxAttributes)
            throw CHostError("an element has more than " + std::to_string(maxAttributes) + " attributes");
        nMarks += nAttributes + (text[token.nBegin] == OLESTR('<') ? 1 : 0);
        if (nMarks > maxMarks)
            throw CHostError("has more than " + std::to_string(maxMarks) + " tags and attributes");
    }
}

namespace
{
// What the declaration says of the encoding was true of the bytes; of the decoded text it is not.
CWideString WithoutEncodingName(CWideString strText)
{
    if (const auto declaration = FindEncodingDeclaration(strText))
        strText.replace(declaration->nBegin, declaration->nEnd - declaration->nBegin,
                        CWideString(declaration->nEnd - declaration->nBegin, OLESTR(' ')));
    return strText;
}

// False for a text that is not well-formed; the document then knows why.
bool Load(IXMLDOMDocument& document, CWideView text)
{
    const CBstr bstrText(text);
    VARIANT_BOOL bLoaded = VARIANT_FALSE;
    return document.loadXML(bstrText.Get(), &bLoaded) == S_OK && bLoaded == VARIANT_TRUE;
}

struct ParseError
{
    LONG lLine = 0;
    std::string strReason;
};

ParseError ErrorOf(IXMLDOMDocument& document)
{
    ParseError result;
    CComRef<IXMLDOMParseError> error;
    if (FAILED(document.get_parseError(error.Put())) || !error)
        return result;
    error->get_line(&result.lLine);
    CBstr bstrReason;
    if (SUCCEEDED(error->get_reason(bstrReason.Put())) && bstrReason)
        result.strReason = Utf8Of(bstrReason.View().substr(0, bstrReason.View().find_first_of(OLESTR("\r\n"))));
    return result;
}

// A reason may quote what it does not understand: when that is a part of a key, the text without keys has another one.
[[noreturn]] void RefuseText(IXMLDOMDocument& document, CWideView text)
{
    const ParseError error = ErrorOf(document);
    Load(document, WithoutKeys(text));
    const bool bQuotesKey = error.strReason != ErrorOf(document).strReason;
    throw CHostError("not well-formed XML" + (error.lLine > 0 ? " (line " + std::to_string(error.lLine) + ")" : std::string()) +
                     (bQuotesKey                ? ": in a key, or because of one"
                      : error.strReason.empty() ? ""
                                                : ": " + error.strReason));
}

CComRef<IXMLDOMElement> LoadRoot(const CWideString& strText)
{
    CComRef<IXMLDOMDocument> document;
    RequireSuccess(CoCreateInstance(documentClass, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument, document.PutVoid()),
                   "creating an XML document");
    RequireSuccess(document->put_async(VARIANT_FALSE), "IXMLDOMDocument::put_async");
    RequireSuccess(document->put_validateOnParse(VARIANT_FALSE), "IXMLDOMDocument::put_validateOnParse");
    RequireSuccess(document->put_resolveExternals(VARIANT_FALSE), "IXMLDOMDocument::put_resolveExternals");
    const CWideString strDecoded = WithoutEncodingName(strText);
    if (!Load(*document.Get(), strDecoded))
        RefuseText(*document.Get(), strDecoded);
    CComRef<IXMLDOMElement> root;
    document->get_documentElement(root.Put());
    return root;
}

bool IsNamed(IXMLDOMNode& node, CWideView localName)
{
    CBstr bstrName;
    return SUCCEEDED(node.get_baseName(bstrName.Put())) && bstrName.View() == localName;
}

// The first child element, of the local name when one is given; none when there is no such.
CComRef<IXMLDOMNode> ChildElement(IXMLDOMNode& parent, CWideView localName = {})
{
    CComRef<IXMLDOMNode> child;
    parent.get_firstChild(child.Put());
    while (child)
    {
        DOMNodeType type = NODE_INVALID;
        if (SUCCEEDED(child->get_nodeType(&type)) && type == NODE_ELEMENT &&
            (localName.empty() || IsNamed(*child.Get(), localName)))
            break;
        CComRef<IXMLDOMNode> next;
        child->get_nextSibling(next.Put());
        child = std::move(next);
    }
    return child;
}

CWideString ProfileName(IXMLDOMElement& root)
{
    const CComRef<IXMLDOMNode> name = ChildElement(root, OLESTR("name"));
    if (!name)
        return {};
    // The component would make one text of what is in them.
    if (ChildElement(*name.Get()))
        throw CHostError("not a wireless profile: its name holds an element");
    CBstr bstrText;
    RequireSuccess(name->get_text(bstrText.Put()), "IXMLDOMNode::get_text");
    return CWideString(bstrText.View());
}
} // namespace

CWideString CheckProfileDocument(const CWideString& strText)
{
    // No profile has one, and all entities come from there; nothing here has to scan past it.
    if (HasDocumentType(strText.c_str()))
        throw CHostError("not a wireless profile: it has a document type declaration");
    RequireModerateMarkup(strText);
    const CComRef<IXMLDOMElement> root = LoadRoot(strText);
    if (!root || !IsNamed(*root.Get(), OLESTR("WLANProfile")))
        throw CHostError("not a wireless profile: the root element is not WLANProfile");
    return ProfileName(*root.Get());
}
