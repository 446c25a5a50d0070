#include "host/ProfileDocument.h"

#include "host/HostError.h"
#include "host/Results.h"
#include "host/XmlQuery.h"

namespace
{
constexpr CWideView profileElement = OLESTR("WLANProfile");
constexpr CWideView nameElement = OLESTR("name");

bool IsNamed(IXMLDOMNode* pNode, CWideView localName)
{
    CUniqueBstr bstrName;
    return SUCCEEDED(pNode->get_baseName(bstrName.Put())) && ViewOf(bstrName.Get()) == localName;
}

CWideString ProfileName(IXMLDOMElement* pRoot)
{
    CUniqueInterface<IXMLDOMNode> child;
    if (FAILED(pRoot->get_firstChild(child.Put())))
        return {};
    while (child)
    {
        DOMNodeType type = NODE_INVALID;
        if (SUCCEEDED(child.Get()->get_nodeType(&type)) && type == NODE_ELEMENT && IsNamed(child.Get(), nameElement))
        {
            CUniqueBstr bstrText;
            RequireSuccess(child.Get()->get_text(bstrText.Put()), "IXMLDOMNode::get_text");
            return CWideString(ViewOf(bstrText.Get()));
        }
        CUniqueInterface<IXMLDOMNode> next;
        if (FAILED(child.Get()->get_nextSibling(next.Put())))
            return {};
        child = std::move(next);
    }
    return {};
}
} // namespace

CWideString CheckProfileDocument(CWideView text)
{
    const CUniqueInterface<IXMLDOMDocument> document = LoadXml(text);
    CUniqueInterface<IXMLDOMElement> root;
    if (document.Get()->get_documentElement(root.Put()) != S_OK || !root || !IsNamed(root.Get(), profileElement))
        throw CHostError("not a wireless profile: the root element is not WLANProfile");
    return ProfileName(root.Get());
}
