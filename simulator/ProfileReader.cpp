#include "simulator/ProfileReader.h"

#include "simulator/ReasonCodes.h"
#include "simulator/ServiceError.h"

#include <limits>
#include <wlanapi.h>

#include <new>

namespace simulator
{
namespace
{
// The platform's DOMDocument class. Headers differ in which version's class they give that name.
constexpr CLSID documentClass = {0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

template <class T>
class CComOwner
{
public:
    CComOwner() = default;
    ~CComOwner()
    {
        if (m_p)
            m_p->Release();
    }
    CComOwner(const CComOwner&) = delete;
    CComOwner& operator=(const CComOwner&) = delete;
    T** Put()
    {
        return &m_p;
    }
    T* operator->() const
    {
        return m_p;
    }
    explicit operator bool() const
    {
        return m_p != nullptr;
    }

private:
    T* m_p = nullptr;
};

class CBstr
{
public:
    CBstr() = default;
    explicit CBstr(WideView text)
    {
        if (text.size() > std::numeric_limits<UINT>::max() / sizeof(OLECHAR))
            throw std::bad_alloc();
        m_bstr = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
        if (!m_bstr)
            throw std::bad_alloc();
    }
    ~CBstr()
    {
        SysFreeString(m_bstr);
    }
    CBstr(const CBstr&) = delete;
    CBstr& operator=(const CBstr&) = delete;
    BSTR* Put()
    {
        return &m_bstr;
    }
    BSTR Get() const
    {
        return m_bstr;
    }
    WideView View() const
    {
        return m_bstr ? WideView(m_bstr, SysStringLen(m_bstr)) : WideView();
    }

private:
    BSTR m_bstr = nullptr;
};

void Check(HRESULT hr)
{
    if (hr == E_OUTOFMEMORY)
        throw std::bad_alloc();
    if (FAILED(hr))
        throw CServiceError(ERROR_GEN_FAILURE, "the document component failed");
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
    CComOwner<IXMLDOMDocument> document;
    Check(CoCreateInstance(documentClass, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                           reinterpret_cast<void**>(document.Put())));
    Check(document->put_async(VARIANT_FALSE));
    Check(document->put_validateOnParse(VARIANT_FALSE));
    Check(document->put_resolveExternals(VARIANT_FALSE));
    m_pDocument = *document.Put();
    m_pDocument->AddRef();
}

CProfileReader::~CProfileReader()
{
    m_pDocument->Release();
}

ProfileVerdict CProfileReader::Read(WideView text)
{
    const ProfileVerdict refused{reasonInvalidProfileSchema, {}};
    const CBstr bstrText(text);
    VARIANT_BOOL bLoaded = VARIANT_FALSE;
    if (m_pDocument->loadXML(bstrText.Get(), &bLoaded) != S_OK || bLoaded != VARIANT_TRUE)
        return refused;

    CComOwner<IXMLDOMElement> root;
    CBstr bstrRoot;
    if (m_pDocument->get_documentElement(root.Put()) != S_OK || !root || root->get_nodeName(bstrRoot.Put()) != S_OK)
        return refused;
    if (bstrRoot.View() != OLESTR("WLANProfile"))
        return refused;

    CComOwner<IXMLDOMNode> nameElement;
    const CBstr bstrPath(OLESTR("/WLANProfile/name"));
    if (root->selectSingleNode(bstrPath.Get(), nameElement.Put()) != S_OK || !nameElement)
        return refused;

    CBstr bstrName;
    Check(nameElement->get_text(bstrName.Put()));
    const WideView name = bstrName.View();
    if (name.empty() || name.size() >= WLAN_MAX_NAME_LENGTH)
        return {reasonInvalidProfileName, {}};
    return {reasonSuccess, WideText(name)};
}
} // namespace simulator
