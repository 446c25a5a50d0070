#include "DocumentClass.h"

#include "Boundary.h"
#include "CountedObject.h"
#include "NodeObject.h"
#include "Parser.h"
#include "Path.h"
#include "Writer.h"

extern "C"
{
    extern const IID IID_IXMLDOMNode = {0x2933BF80, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
    extern const IID IID_IXMLDOMDocument = {0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
    extern const IID IID_IXMLDOMElement = {0x2933BF86, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
    extern const IID IID_IXMLDOMParseError = {0x3EFAA426, 0x272F, 0x11D2, {0x83, 0x6F, 0x00, 0x00, 0xF8, 0x7A, 0x77, 0x82}};
}

namespace platform::msxml3
{
namespace
{
// Keeps what the last load said; a later load does not change it.
class CParseError final : public CCountedObject<IXMLDOMParseError, IID_IXMLDOMParseError>
{
public:
    explicit CParseError(const LoadError& error) : m_error(error)
    {
    }

    STDMETHODIMP get_reason(BSTR* pbstrReason) override
    {
        return Answer("get_reason", pbstrReason,
                      [&] { return m_error.reason.empty() ? S_FALSE : GiveText(m_error.reason, pbstrReason); });
    }
    STDMETHODIMP get_line(LONG* plLine) override
    {
        return Answer("get_line", plLine, [&] { return *plLine = m_error.lLine, m_error.reason.empty() ? S_FALSE : S_OK; });
    }

private:
    LoadError m_error;
};

// Validation and external resolution do not exist here; only switching them off succeeds.
HRESULT AcceptOff(VARIANT_BOOL bOn) noexcept
{
    return bOn == VARIANT_FALSE ? S_OK : E_NOTIMPL;
}

class CDocumentObject final : public CCountedObject<IXMLDOMDocument, IID_IXMLDOMDocument>
{
public:
    STDMETHODIMP get_xml(BSTR* pbstrXml) override
    {
        return Answer("get_xml", pbstrXml, [&] { return GiveText(WriteDocument(*m_tree->Document()), pbstrXml); });
    }
    STDMETHODIMP selectSingleNode(BSTR bstrQuery, IXMLDOMNode** ppNode) override
    {
        return Answer("selectSingleNode", ppNode,
                      [&]
                      {
                          const auto path = CPath::Parse(TextOf(bstrQuery));
                          auto& document = reinterpret_cast<xmlNode&>(*m_tree->Document());
                          return path ? GiveNode(m_tree, path->FindFrom(document), ppNode) : E_FAIL;
                      });
    }
    STDMETHODIMP get_documentElement(IXMLDOMElement** ppElement) override
    {
        return Answer("get_documentElement", ppElement,
                      [&] { return GiveNode(m_tree, xmlDocGetRootElement(m_tree->Document()), ppElement); });
    }
    STDMETHODIMP createElement(BSTR bstrTagName, IXMLDOMElement** ppElement) override
    {
        return Answer("createElement", ppElement,
                      [&]
                      {
                          // A prefix would need a namespace, which this operation cannot give.
                          const auto name = ToPlainName(TextOf(bstrTagName));
                          if (!name)
                              return E_FAIL;
                          xmlNode& element = Require(xmlNewDocNode(m_tree->Document(), nullptr, Units(*name), nullptr));
                          m_tree->PutOutside(element);
                          return GiveNode(m_tree, &element, ppElement);
                      });
    }
    STDMETHODIMP get_parseError(IXMLDOMParseError** ppError) override
    {
        return Answer("get_parseError", ppError, [&] { return *ppError = new CParseError(m_lastLoad), S_OK; });
    }
    STDMETHODIMP loadXML(BSTR bstrXml, VARIANT_BOOL* pbSuccessful) override
    {
        return Answer("loadXML", pbSuccessful,
                      [&]
                      {
                          // What clients hold of the document before keeps its own tree alive.
                          m_tree = std::make_shared<CTree>(nullptr, m_bPreserveSpace);
                          m_lastLoad = {};
                          DocumentPtr document = ReadXml(TextOf(bstrXml), m_bPreserveSpace, m_lastLoad);
                          if (!document)
                              return S_FALSE;
                          m_tree = std::make_shared<CTree>(std::move(document), m_bPreserveSpace);
                          // A component may say by one of the two alone that it has loaded.
                          *pbSuccessful = testing::FaultFires("loadXML's flag") ? VARIANT_FALSE : VARIANT_TRUE;
                          return testing::FaultFires("loadXML's result") ? S_FALSE : S_OK;
                      });
    }
    STDMETHODIMP put_async(VARIANT_BOOL) override
    {
        return S_OK; // loadXML never is
    }
    STDMETHODIMP put_validateOnParse(VARIANT_BOOL bValidate) override
    {
        return AcceptOff(bValidate);
    }
    STDMETHODIMP put_resolveExternals(VARIANT_BOOL bResolve) override
    {
        return AcceptOff(bResolve);
    }
    STDMETHODIMP put_preserveWhiteSpace(VARIANT_BOOL bPreserve) override
    {
        m_bPreserveSpace = bPreserve != VARIANT_FALSE;
        return S_OK;
    }

private:
    std::shared_ptr<CTree> m_tree = std::make_shared<CTree>(nullptr, false);
    bool m_bPreserveSpace = false;
    LoadError m_lastLoad;
};

// One for the process, never freed; its references are not worth counting.
class CDocumentFactory final : public IClassFactory
{
public:
    STDMETHODIMP QueryInterface(REFIID riid, void** ppvObject) override
    {
        if (!ppvObject)
            return E_POINTER;
        const bool bKnown = riid == IID_IUnknown || riid == IID_IClassFactory;
        *ppvObject = bKnown ? static_cast<IClassFactory*>(this) : nullptr;
        return bKnown ? S_OK : E_NOINTERFACE;
    }
    STDMETHODIMP_(ULONG) AddRef() override
    {
        return 2;
    }
    STDMETHODIMP_(ULONG) Release() override
    {
        return 1;
    }
    STDMETHODIMP CreateInstance(IUnknown* pUnkOuter, REFIID riid, void** ppvObject) override
    {
        if (!ppvObject)
            return E_POINTER;
        *ppvObject = nullptr;
        const auto create = [&]
        {
            if (pUnkOuter)
                return CLASS_E_NOAGGREGATION;
            IXMLDOMDocument* const pDocument = new CDocumentObject;
            const HRESULT hr = pDocument->QueryInterface(riid, ppvObject);
            pDocument->Release();
            return hr;
        };
        return Perform("CreateDocument", create);
    }
    STDMETHODIMP LockServer(BOOL) override
    {
        return S_OK; // there is nothing to unload
    }
};
} // namespace
} // namespace platform::msxml3

namespace platform
{
const CLSID documentClass = {0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

HRESULT GetDocumentClassObject(REFIID riid, void** ppv)
{
    static msxml3::CDocumentFactory factory;
    return factory.QueryInterface(riid, ppv);
}
} // namespace platform
