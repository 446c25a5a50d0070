#include "profile/XmlDocument.h"

#include "profile/DocumentPrologue.h"

#include <algorithm>

namespace
{
// {2933BF90-7B36-11D2-B20E-00C04F983E60}
constexpr CLSID documentClass = {0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

bool IsXmlSpace(WCHAR ch)
{
    return ch == OLESTR(' ') || ch == OLESTR('\t') || ch == OLESTR('\r') || ch == OLESTR('\n');
}

class CVariant
{
public:
    CVariant() = default;
    ~CVariant()
    {
        VariantClear(&m_variant);
    }
    CVariant(const CVariant&) = delete;
    CVariant& operator=(const CVariant&) = delete;

    VARIANT* Put()
    {
        return &m_variant;
    }
    const VARIANT& Get() const
    {
        return m_variant;
    }
    void SetText(const WCHAR* szText)
    {
        m_variant.vt = VT_BSTR;
        m_variant.bstrVal = CBstr(szText).Detach();
    }
    void SetObject(IUnknown* pObject)
    {
        pObject->AddRef();
        m_variant.vt = VT_UNKNOWN;
        m_variant.punkVal = pObject;
    }

private:
    VARIANT m_variant = {}; // VT_EMPTY
};

// Walks the children of a node; visit tells whether to go on. False when a child cannot be reached or visit said no.
template <class Visit>
bool ForEachChild(IXMLDOMNode& node, const Visit& visit)
{
    CComRef<IXMLDOMNode> child;
    HRESULT hr = node.get_firstChild(child.Put());
    while (child)
    {
        DOMNodeType type = NODE_INVALID;
        if (child->get_nodeType(&type) != S_OK || !visit(*child.Get(), type))
            return false;
        CComRef<IXMLDOMNode> next;
        hr = child->get_nextSibling(next.Put());
        child = std::move(next);
    }
    return SUCCEEDED(hr);
}

bool IsText(DOMNodeType type)
{
    return type == NODE_TEXT || type == NODE_CDATA_SECTION;
}

// Gives the text that stands in a text node to take; false when it cannot be read.
template <class Take>
bool ReadNodeText(IXMLDOMNode& node, const Take& take)
{
    CVariant value;
    // One that fails leaves it empty.
    node.get_nodeValue(value.Put());
    if (value.Get().vt != VT_BSTR)
        return false;
    const BSTR bstrValue = value.Get().bstrVal;
    take(CWideView(bstrValue, SysStringLen(bstrValue)));
    return true;
}

bool IsWhiteSpace(CWideView text)
{
    return std::all_of(text.begin(), text.end(), IsXmlSpace);
}

enum class WhiteSpace
{
    Keep,
    // Where it stands beside elements, and so only separates them.
    DropSeparators,
};

// The platform's own text trims, and puts a blank where indentation stood between elements, so the text is gathered node
// by node. No profile is nearly as deep as the limit; a component that loads deeper ones must not use up the host's stack.
constexpr int maxTextDepth = 256;

bool AppendDescendantText(IXMLDOMNode& node, WhiteSpace whiteSpace, CWideString& text, int nDepth)
{
    if (nDepth > maxTextDepth)
        return false;
    bool bHasElements = false;
    const auto noteElement = [&](IXMLDOMNode&, DOMNodeType type)
    {
        bHasElements = bHasElements || type == NODE_ELEMENT;
        return true;
    };
    const auto appendPiece = [&](CWideView piece)
    {
        if (whiteSpace == WhiteSpace::Keep || !bHasElements || !IsWhiteSpace(piece))
            text += piece;
    };
    const auto append = [&](IXMLDOMNode& child, DOMNodeType type)
    {
        if (IsText(type))
            return ReadNodeText(child, appendPiece);
        return type != NODE_ELEMENT || AppendDescendantText(child, whiteSpace, text, nDepth + 1);
    };
    // Only what separates elements has to be known for what it is before it is met.
    return (whiteSpace == WhiteSpace::Keep || ForEachChild(node, noteElement)) && ForEachChild(node, append);
}

std::optional<CWideString> DescendantText(IXMLDOMNode* pNode, WhiteSpace whiteSpace)
{
    CWideString text;
    if (!pNode || !AppendDescendantText(*pNode, whiteSpace, text, 0))
        return std::nullopt;
    return text;
}
} // namespace

CXmlNode CXmlNode::Select(const WCHAR* szPath) const
{
    const CBstr bstrPath(szPath);
    CComRef<IXMLDOMNode> found;
    if (!m_node || m_node->selectSingleNode(bstrPath.Get(), found.Put()) != S_OK)
        return {};
    return CXmlNode(std::move(found));
}

std::optional<bool> CXmlNode::HasChildren() const
{
    VARIANT_BOOL bHasChildren = VARIANT_FALSE;
    if (!m_node || FAILED(m_node->hasChildNodes(&bHasChildren)))
        return std::nullopt;
    if (bHasChildren != VARIANT_TRUE)
        return false;
    bool bAnyButSpace = false;
    const auto look = [&](IXMLDOMNode& child, DOMNodeType type)
    {
        const auto lookAtText = [&](CWideView text) { bAnyButSpace = bAnyButSpace || !IsWhiteSpace(text); };
        bAnyButSpace = bAnyButSpace || !IsText(type);
        return !IsText(type) || ReadNodeText(child, lookAtText);
    };
    if (!ForEachChild(*m_node.Get(), look))
        return std::nullopt;
    return bAnyButSpace;
}

std::optional<CWideString> CXmlNode::Text() const
{
    return DescendantText(m_node.Get(), WhiteSpace::Keep);
}

std::optional<CWideString> CXmlNode::TextOfElements() const
{
    return DescendantText(m_node.Get(), WhiteSpace::DropSeparators);
}

void CXmlNode::SetText(const WCHAR* szText) const
{
    const CBstr bstrText(szText);
    if (m_node)
        m_node->put_text(bstrText.Get());
}

void CXmlNode::Remove(const CXmlNode& child) const
{
    CComRef<IXMLDOMNode> removed;
    if (m_node)
        m_node->removeChild(child.Get(), removed.Put());
}

CXmlNode CXmlNode::Append(const CXmlNode& child) const
{
    CComRef<IXMLDOMNode> appended;
    if (!m_node || !child || m_node->appendChild(child.Get(), appended.Put()) != S_OK)
        return {};
    return CXmlNode(std::move(appended));
}

CXmlNode CXmlNode::InsertBefore(const CXmlNode& child, const CXmlNode& reference) const
{
    if (!m_node || !child || !reference)
        return {};
    CVariant varReference;
    varReference.SetObject(reference.Get());
    CComRef<IXMLDOMNode> inserted;
    if (m_node->insertBefore(child.Get(), varReference.Get(), inserted.Put()) != S_OK)
        return {};
    return CXmlNode(std::move(inserted));
}

void CXmlNode::SetAttribute(const WCHAR* szName, const WCHAR* szValue) const
{
    CComRef<IXMLDOMElement> element;
    if (!m_node || m_node->QueryInterface(IID_IXMLDOMElement, element.PutVoid()) != S_OK)
        return;
    const CBstr bstrName(szName);
    CVariant varValue;
    varValue.SetText(szValue);
    // Some components write an attribute of a null name, and so a text that never loads again.
    if (bstrName && varValue.Get().bstrVal)
        element->setAttribute(bstrName.Get(), varValue.Get());
}

CBstr CXmlNode::Xml() const
{
    CBstr bstrXml;
    if (!m_node || m_node->get_xml(bstrXml.Put()) != S_OK)
        return {};
    return bstrXml;
}

CXmlDocument::CXmlDocument()
{
    if (CoCreateInstance(documentClass, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument, m_document.PutVoid()) != S_OK)
        return;
    // Nothing but the text itself: no other file is read, nothing is validated, and loading is done when Load returns.
    m_document->put_async(VARIANT_FALSE);
    m_document->put_validateOnParse(VARIANT_FALSE);
    m_document->put_resolveExternals(VARIANT_FALSE);
    // White space can be content: the name of a network may be a blank.
    m_document->put_preserveWhiteSpace(VARIANT_TRUE);
}

bool CXmlDocument::Load(const WCHAR* szText)
{
    const CBstr bstrText(szText);
    if (!m_document || HasDocumentType(bstrText.View()))
        return false;
    VARIANT_BOOL bLoaded = VARIANT_FALSE;
    return m_document->loadXML(bstrText.Get(), &bLoaded) == S_OK || bLoaded == VARIANT_TRUE;
}

CXmlNode CXmlDocument::Root() const
{
    CComRef<IXMLDOMElement> element;
    if (!m_document || m_document->get_documentElement(element.Put()) != S_OK)
        return {};
    return CXmlNode(std::move(element));
}

CXmlNode CXmlDocument::CreateElement(const WCHAR* szName) const
{
    const CBstr bstrName(szName);
    CComRef<IXMLDOMElement> element;
    if (!m_document || m_document->createElement(bstrName.Get(), element.Put()) != S_OK)
        return {};
    return CXmlNode(std::move(element));
}

CXmlNode CXmlDocument::AppendElement(const CXmlNode& parent, const WCHAR* szName) const
{
    return parent.Append(CreateElement(szName));
}

CBstr CXmlDocument::Xml() const
{
    CBstr bstrXml;
    if (!m_document || m_document->get_xml(bstrXml.Put()) != S_OK)
        return {};
    return bstrXml;
}
