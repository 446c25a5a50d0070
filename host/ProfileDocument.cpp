#include "host/ProfileDocument.h"

#include "host/ComResults.h"
#include "host/HostError.h"
#include "host/ProfileText.h"
#include "profile/DocumentPrologue.h"
#include "values/Bstr.h"
#include "values/ComRef.h"

#include <msxml2.h>

namespace
{
// {2933BF90-7B36-11D2-B20E-00C04F983E60}
constexpr CLSID documentClass = {0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

[[noreturn]] void RefuseText(IXMLDOMDocument& document)
{
    std::string strReason = "not well-formed XML";
    CComRef<IXMLDOMParseError> error;
    LONG lLine = 0;
    if (SUCCEEDED(document.get_parseError(error.Put())) && error)
    {
        CBstr bstrReason;
        if (SUCCEEDED(error->get_line(&lLine)) && lLine > 0)
            strReason += " (line " + std::to_string(lLine) + ")";
        if (SUCCEEDED(error->get_reason(bstrReason.Put())) && bstrReason)
            strReason += ": " + Utf8Of(bstrReason.View().substr(0, bstrReason.View().find_first_of(OLESTR("\r\n"))));
    }
    throw CHostError(strReason);
}

// What the declaration says of the encoding was true of the bytes; of the decoded text it is not.
CWideString WithoutEncodingName(CWideString strText)
{
    if (const auto declaration = FindEncodingDeclaration(strText))
        strText.replace(declaration->nBegin, declaration->nEnd - declaration->nBegin,
                        CWideString(declaration->nEnd - declaration->nBegin, OLESTR(' ')));
    return strText;
}

CComRef<IXMLDOMElement> LoadRoot(const CWideString& strText)
{
    CComRef<IXMLDOMDocument> document;
    RequireSuccess(CoCreateInstance(documentClass, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument, document.PutVoid()),
                   "creating an XML document");
    RequireSuccess(document->put_async(VARIANT_FALSE), "IXMLDOMDocument::put_async");
    RequireSuccess(document->put_validateOnParse(VARIANT_FALSE), "IXMLDOMDocument::put_validateOnParse");
    RequireSuccess(document->put_resolveExternals(VARIANT_FALSE), "IXMLDOMDocument::put_resolveExternals");
    const CBstr bstrText(CWideView(WithoutEncodingName(strText)));
    VARIANT_BOOL bLoaded = VARIANT_FALSE;
    const HRESULT hr = document->loadXML(bstrText.Get(), &bLoaded);
    if (hr != S_OK || bLoaded != VARIANT_TRUE)
        RefuseText(*document.Get());
    CComRef<IXMLDOMElement> root;
    document->get_documentElement(root.Put());
    return root;
}

bool IsNamed(IXMLDOMNode& node, CWideView localName)
{
    CBstr bstrName;
    return SUCCEEDED(node.get_baseName(bstrName.Put())) && bstrName.View() == localName;
}

CWideString ProfileName(IXMLDOMElement& root)
{
    CComRef<IXMLDOMNode> child;
    root.get_firstChild(child.Put());
    while (child)
    {
        DOMNodeType type = NODE_INVALID;
        if (SUCCEEDED(child->get_nodeType(&type)) && type == NODE_ELEMENT && IsNamed(*child.Get(), OLESTR("name")))
        {
            CBstr bstrText;
            RequireSuccess(child->get_text(bstrText.Put()), "IXMLDOMNode::get_text");
            return CWideString(bstrText.View());
        }
        CComRef<IXMLDOMNode> next;
        child->get_nextSibling(next.Put());
        child = std::move(next);
    }
    return {};
}
} // namespace

CWideString CheckProfileDocument(const CWideString& strText)
{
    // No profile has one, and all entities come from there; nothing here has to scan past it.
    if (HasDocumentType(strText.c_str()))
        throw CHostError("not a wireless profile: it has a document type declaration");
    const CComRef<IXMLDOMElement> root = LoadRoot(strText);
    if (!root || !IsNamed(*root.Get(), OLESTR("WLANProfile")))
        throw CHostError("not a wireless profile: the root element is not WLANProfile");
    return ProfileName(*root.Get());
}
