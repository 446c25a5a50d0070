#include "simulator/ProfileReader.h"

#include "simulator/ReasonCodes.h"
#include "simulator/ServiceError.h"
#include "values/Bstr.h"

#include <wlanapi.h>

namespace simulator
{
namespace
{
// The platform's DOMDocument class. Headers differ in which version's class they give that name.
constexpr CLSID documentClass = {0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

void Check(HRESULT hr)
{
    if (hr == E_OUTOFMEMORY)
        throw std::bad_alloc();
    if (FAILED(hr))
        throw CServiceError(ERROR_GEN_FAILURE, "the document component failed");
}

bool HasElements(IXMLDOMNode& parent)
{
    CComRef<IXMLDOMNode> child;
    parent.get_firstChild(child.Put());
    while (child)
    {
        DOMNodeType type = NODE_INVALID;
        Check(child->get_nodeType(&type));
        if (type == NODE_ELEMENT)
            return true;
        CComRef<IXMLDOMNode> next;
        child->get_nextSibling(next.Put());
        child = std::move(next);
    }
    return false;
}
} // namespace

CComScope::CComScope()
{
    const HRESULT hr = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    m_bOwned = SUCCEEDED(hr);
    if (hr != RPC_E_CHANGED_MODE)
        Check(hr);
}

CComScope::~CComScope()
{
    if (m_bOwned)
        CoUninitialize();
}

CProfileReader::CProfileReader()
{
    Check(CoCreateInstance(documentClass, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument, m_document.PutVoid()));
    Check(m_document->put_async(VARIANT_FALSE));
    Check(m_document->put_validateOnParse(VARIANT_FALSE));
    Check(m_document->put_resolveExternals(VARIANT_FALSE));
}

ProfileVerdict CProfileReader::Read(CWideView text)
{
    const ProfileVerdict refused{reasonInvalidProfileSchema, {}};
    const CBstr bstrText(text);
    VARIANT_BOOL bLoaded = VARIANT_FALSE;
    if (m_document->loadXML(bstrText.Get(), &bLoaded) != S_OK || bLoaded != VARIANT_TRUE)
        return refused;

    CComRef<IXMLDOMElement> root;
    CBstr bstrRoot;
    if (m_document->get_documentElement(root.Put()) != S_OK || !root || root->get_nodeName(bstrRoot.Put()) != S_OK)
        return refused;
    if (bstrRoot.View() != OLESTR("WLANProfile"))
        return refused;

    CComRef<IXMLDOMNode> nameElement;
    const CBstr bstrPath(CWideView(OLESTR("/WLANProfile/name")));
    if (root->selectSingleNode(bstrPath.Get(), nameElement.Put()) != S_OK || !nameElement || HasElements(*nameElement.Get()))
        return refused;

    CBstr bstrName;
    Check(nameElement->get_text(bstrName.Put()));
    const CWideView name = bstrName.View();
    if (name.empty() || name.size() >= WLAN_MAX_NAME_LENGTH)
        return {reasonInvalidProfileName, {}};
    return {reasonSuccess, CWideString(name)};
}
} // namespace simulator
