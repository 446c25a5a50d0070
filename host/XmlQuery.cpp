#include "host/XmlQuery.h"

#include "host/HostError.h"
#include "host/ProfileText.h"
#include "host/Results.h"

namespace
{
constexpr CLSID documentClass = {0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
constexpr IID documentInterface = {0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

CUniqueInterface<IXMLDOMDocument> MakeDocument()
{
    CUniqueInterface<IXMLDOMDocument> document;
    RequireSuccess(CoCreateInstance(documentClass, nullptr, CLSCTX_INPROC_SERVER, documentInterface,
                                    reinterpret_cast<void**>(document.Put())),
                   "creating an XML document");
    RequireSuccess(document.Get()->put_async(VARIANT_FALSE), "IXMLDOMDocument::put_async");
    RequireSuccess(document.Get()->put_validateOnParse(VARIANT_FALSE), "IXMLDOMDocument::put_validateOnParse");
    RequireSuccess(document.Get()->put_resolveExternals(VARIANT_FALSE), "IXMLDOMDocument::put_resolveExternals");
    return document;
}

std::string FirstLine(CWideView text)
{
    return Utf8Of(text.substr(0, text.find_first_of(OLESTR("\r\n"))));
}

[[noreturn]] void RefuseText(IXMLDOMDocument* pDocument)
{
    std::string strReason = "not well-formed XML";
    CUniqueInterface<IXMLDOMParseError> error;
    LONG lLine = 0;
    if (SUCCEEDED(pDocument->get_parseError(error.Put())) && error)
    {
        CUniqueBstr bstrReason;
        if (SUCCEEDED(error.Get()->get_line(&lLine)) && lLine > 0)
            strReason += " (line " + std::to_string(lLine) + ")";
        if (SUCCEEDED(error.Get()->get_reason(bstrReason.Put())) && bstrReason)
            strReason += ": " + FirstLine(ViewOf(bstrReason.Get()));
    }
    throw CHostError(strReason);
}

// What the declaration says of the encoding was true of the bytes; of the decoded text it is not.
CWideString WithoutEncodingName(CWideView text)
{
    CWideString strText(text);
    if (const auto declaration = FindEncodingDeclaration(text))
        strText.replace(declaration->nBegin, declaration->nEnd - declaration->nBegin,
                        CWideString(declaration->nEnd - declaration->nBegin, OLESTR(' ')));
    return strText;
}
} // namespace

CUniqueInterface<IXMLDOMDocument> LoadXml(CWideView text)
{
    CUniqueInterface<IXMLDOMDocument> document = MakeDocument();
    const CUniqueBstr bstrText = MakeBstr(CWideView(WithoutEncodingName(text)));
    VARIANT_BOOL bLoaded = VARIANT_FALSE;
    const HRESULT hr = document.Get()->loadXML(bstrText.Get(), &bLoaded);
    if (hr != S_OK || bLoaded != VARIANT_TRUE)
        RefuseText(document.Get());
    return document;
}

std::optional<CWideString> CXmlQuery::Text(CWideView path) const
{
    CUniqueInterface<IXMLDOMNode> node;
    const CUniqueBstr bstrPath = MakeBstr(path);
    const HRESULT hr = m_document.Get()->selectSingleNode(bstrPath.Get(), node.Put());
    RequireSuccess(hr, "IXMLDOMNode::selectSingleNode");
    if (hr != S_OK || !node)
        return std::nullopt;
    CUniqueBstr bstrText;
    RequireSuccess(node.Get()->get_text(bstrText.Put()), "IXMLDOMNode::get_text");
    return CWideString(ViewOf(bstrText.Get()));
}
