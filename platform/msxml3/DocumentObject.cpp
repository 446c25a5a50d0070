// The document interface.
#include "NodeObject.h"
#include "ParseError.h"
#include "Parser.h"
#include "XmlText.h"

namespace platform::msxml3
{
namespace
{
// Validation and external resolution do not exist here; only switching them off succeeds.
HRESULT AcceptOff(VARIANT_BOOL bOn) noexcept
{
    return bOn == VARIANT_FALSE ? S_OK : E_NOTIMPL;
}

class CDocumentObject final : public CNodeObject<IXMLDOMDocument, IID_IXMLDOMDocument>
{
public:
    explicit CDocumentObject(const std::shared_ptr<CTree>& tree) noexcept : CNodeObject(tree, tree->Root())
    {
    }

    STDMETHODIMP get_documentElement(IXMLDOMElement** ppElement) override
    {
        return Answer("get_documentElement", ppElement,
                      [&]
                      {
                          Node* const pRoot = Tree().RootElement();
                          if (!pRoot)
                              return S_FALSE;
                          *ppElement = NewElementObject(SharedTree(), *pRoot);
                          return S_OK;
                      });
    }
    STDMETHODIMP createElement(BSTR bstrTagName, IXMLDOMElement** ppElement) override
    {
        return Answer("createElement", ppElement,
                      [&]
                      {
                          // A prefix would need a namespace, which this operation cannot give.
                          if (!IsPlainName(TextOf(bstrTagName)))
                              return E_FAIL;
                          *ppElement = NewElementObject(SharedTree(), Tree().NewNode(NODE_ELEMENT, TextOf(bstrTagName)));
                          return S_OK;
                      });
    }
    STDMETHODIMP get_parseError(IXMLDOMParseError** ppError) override
    {
        return Answer("get_parseError", ppError,
                      [&]
                      {
                          *ppError = new CParseError(Tree().LastLoad());
                          return S_OK;
                      });
    }
    STDMETHODIMP loadXML(BSTR bstrXml, VARIANT_BOOL* pbSuccessful) override
    {
        return Answer("loadXML", pbSuccessful,
                      [&]
                      {
                          const HRESULT hr = Load(TextOf(bstrXml));
                          *pbSuccessful = hr == S_OK ? VARIANT_TRUE : VARIANT_FALSE;
                          return hr;
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
        Tree().PreserveWhiteSpace(bPreserve != VARIANT_FALSE);
        return S_OK;
    }

private:
    HRESULT Load(std::u16string_view text)
    {
        Empty();
        try
        {
            Tree().LastLoad(ReadXml(text, Tree()));
        }
        catch (...)
        {
            Empty();
            throw;
        }
        if (Tree().LastLoad().code == S_OK)
            return S_OK;
        Empty();
        return S_FALSE;
    }

    void Empty() noexcept
    {
        Tree().Clear(SharedTree().use_count() > 1);
    }
};
} // namespace

IXMLDOMDocument* NewDocumentObject(const std::shared_ptr<CTree>& tree)
{
    return new CDocumentObject(tree);
}
} // namespace platform::msxml3
