// The element interface.
#include "NodeObject.h"
#include "XmlText.h"

namespace platform::msxml3
{
namespace
{
// A prefix must mean something: those that mean the same everywhere do.
bool IsSettableName(std::u16string_view name) noexcept
{
    const std::u16string_view prefix = PrefixOf(name);
    return IsQualifiedName(name) && (prefix.empty() || prefix == u"xmlns" || prefix == u"xml");
}

class CElementObject final : public CNodeObject<IXMLDOMElement, IID_IXMLDOMElement>
{
public:
    using CNodeObject::CNodeObject;

    STDMETHODIMP get_tagName(BSTR* pbstrName) override
    {
        return Answer("get_tagName", pbstrName, [&] { return GiveText(Held().name, pbstrName); });
    }
    STDMETHODIMP getAttribute(BSTR bstrName, VARIANT* pvarValue) override
    {
        return Answer("getAttribute", pvarValue,
                      [&]
                      {
                          const Node* const pAttribute = FindAttribute(Held(), TextOf(bstrName));
                          return GiveValue(pAttribute ? &pAttribute->value : nullptr, pvarValue);
                      });
    }
    STDMETHODIMP setAttribute(BSTR bstrName, VARIANT varValue) override
    {
        return Perform("setAttribute", [&] { return SetAttribute(TextOf(bstrName), varValue); });
    }

private:
    HRESULT SetAttribute(std::u16string_view name, const VARIANT& varValue)
    {
        if (varValue.vt != VT_BSTR)
            return E_INVALIDARG;
        const std::u16string_view value = TextOf(varValue.bstrVal);
        if (FindIllegal(value) != value.npos)
            return E_INVALIDARG;
        if (Node* const pAttribute = FindAttribute(Held(), name))
        {
            pAttribute->value = value;
            return S_OK;
        }
        if (!IsSettableName(name))
            return E_FAIL;
        Held().attributes.push_back(&Tree().NewNode(NODE_ATTRIBUTE, name, value));
        return S_OK;
    }
};
} // namespace

IXMLDOMElement* NewElementObject(const std::shared_ptr<CTree>& tree, Node& element)
{
    return new CElementObject(tree, element);
}
} // namespace platform::msxml3
