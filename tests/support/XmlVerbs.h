// Short verbs over the XML document component for tests of it; each checks that result and outcome agree.
#pragma once

#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <msxml2.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace tests::xml
{
using Text = std::basic_string<WCHAR>;
using View = std::basic_string_view<WCHAR>;

inline const CLSID documentClass = {0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

template <class Interface>
class CHeld
{
public:
    CHeld() = default;
    CHeld(CHeld&& other) noexcept : m_p(std::exchange(other.m_p, nullptr))
    {
    }
    CHeld& operator=(CHeld&& other) noexcept
    {
        std::swap(m_p, other.m_p);
        return *this;
    }
    ~CHeld()
    {
        Reset();
    }
    void Reset()
    {
        if (Interface* const p = std::exchange(m_p, nullptr))
            p->Release();
    }
    Interface** Put()
    {
        Reset();
        return &m_p;
    }
    Interface* operator->() const
    {
        return m_p;
    }
    Interface* Get() const
    {
        return m_p;
    }
    explicit operator bool() const
    {
        return m_p != nullptr;
    }

private:
    Interface* m_p = nullptr;
};
using Document = CHeld<IXMLDOMDocument>;
using Element = CHeld<IXMLDOMElement>;
using AnyNode = CHeld<IXMLDOMNode>;

class CBstr
{
public:
    CBstr() = default;
    explicit CBstr(View text) : m_bstr(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())))
    {
    }
    CBstr(const CBstr&) = delete;
    CBstr& operator=(const CBstr&) = delete;
    ~CBstr()
    {
        SysFreeString(m_bstr);
    }
    BSTR* Put()
    {
        return &m_bstr;
    }
    BSTR Get() const
    {
        return m_bstr;
    }
    Text Str() const
    {
        return m_bstr ? Text(m_bstr, SysStringLen(m_bstr)) : Text();
    }

private:
    BSTR m_bstr = nullptr;
};

inline Document NewDocument(bool bPreserveWhiteSpace = false)
{
    Document document;
    EXPECT_EQ(CoCreateInstance(documentClass, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                               reinterpret_cast<void**>(document.Put())),
              S_OK);
    EXPECT_EQ(document->put_async(VARIANT_FALSE), S_OK);
    EXPECT_EQ(document->put_validateOnParse(VARIANT_FALSE), S_OK);
    EXPECT_EQ(document->put_resolveExternals(VARIANT_FALSE), S_OK);
    EXPECT_EQ(document->put_preserveWhiteSpace(bPreserveWhiteSpace ? VARIANT_TRUE : VARIANT_FALSE), S_OK);
    return document;
}

inline bool Load(const Document& document, View text)
{
    VARIANT_BOOL bLoaded = VARIANT_FALSE;
    const HRESULT hr = document->loadXML(CBstr(text).Get(), &bLoaded);
    EXPECT_EQ(hr, bLoaded == VARIANT_TRUE ? S_OK : S_FALSE);
    return hr == S_OK;
}

inline Document Loaded(View text, bool bPreserveWhiteSpace = false)
{
    Document document = NewDocument(bPreserveWhiteSpace);
    EXPECT_TRUE(Load(document, text));
    return document;
}

inline Element Root(const Document& document)
{
    Element root;
    document->get_documentElement(root.Put());
    return root;
}

inline Element Create(const Document& document, View name)
{
    Element element;
    EXPECT_EQ(document->createElement(CBstr(name).Get(), element.Put()), S_OK);
    return element;
}

inline AnyNode Select(IXMLDOMNode* pFrom, View query)
{
    AnyNode node;
    const HRESULT hr = pFrom->selectSingleNode(CBstr(query).Get(), node.Put());
    EXPECT_EQ(hr, node ? S_OK : S_FALSE);
    return node;
}

inline Text Xml(IXMLDOMNode* pNode)
{
    CBstr xml;
    EXPECT_EQ(pNode->get_xml(xml.Put()), S_OK);
    return xml.Str();
}

inline Text TextOf(IXMLDOMNode* pNode)
{
    CBstr text;
    EXPECT_EQ(pNode->get_text(text.Put()), S_OK);
    return text.Str();
}

inline Text Name(IXMLDOMNode* pNode)
{
    CBstr name;
    EXPECT_EQ(pNode->get_nodeName(name.Put()), S_OK);
    return name.Str();
}

inline Text Value(IXMLDOMNode* pNode)
{
    VARIANT value;
    VariantInit(&value);
    EXPECT_EQ(pNode->get_nodeValue(&value), S_OK);
    EXPECT_EQ(value.vt, VT_BSTR);
    const Text text(value.bstrVal, SysStringLen(value.bstrVal));
    VariantClear(&value);
    return text;
}

inline void SetAttribute(const Element& element, View name, View text)
{
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_BSTR;
    const CBstr owned(text);
    value.bstrVal = owned.Get();
    EXPECT_EQ(element->setAttribute(CBstr(name).Get(), value), S_OK);
}

inline Text Attribute(const Element& element, View name)
{
    VARIANT value;
    VariantInit(&value);
    const HRESULT hr = element->getAttribute(CBstr(name).Get(), &value);
    EXPECT_EQ(hr, value.vt == VT_BSTR ? S_OK : S_FALSE);
    const Text text = hr == S_OK ? Text(value.bstrVal, SysStringLen(value.bstrVal)) : OLESTR("(none)");
    VariantClear(&value);
    return text;
}

// Names, texts and nesting of a subtree, without anything that two writers may write differently.
inline Text Outline(IXMLDOMNode* pNode)
{
    DOMNodeType type = NODE_INVALID;
    EXPECT_EQ(pNode->get_nodeType(&type), S_OK);
    switch (type)
    {
    case NODE_TEXT:
        return OLESTR("'") + Value(pNode) + OLESTR("'");
    case NODE_CDATA_SECTION:
        return OLESTR("[") + Value(pNode) + OLESTR("]");
    case NODE_COMMENT:
        return OLESTR("#") + Value(pNode) + OLESTR("#");
    case NODE_ELEMENT:
        break;
    default:
        return OLESTR("?") + Name(pNode);
    }
    Text outline = Name(pNode) + OLESTR("(");
    AnyNode child;
    HRESULT hr = pNode->get_firstChild(child.Put());
    while (hr == S_OK)
    {
        outline += Outline(child.Get());
        AnyNode next;
        hr = child->get_nextSibling(next.Put());
        child = std::move(next);
    }
    EXPECT_EQ(hr, S_FALSE);
    return outline + OLESTR(")");
}

// Every case runs inside an apartment.
class XmlTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_GE(CoInitializeEx(nullptr, COINIT_MULTITHREADED), 0);
    }
    void TearDown() override
    {
        CoUninitialize();
    }
};

template <class Case>
class XmlCaseTest : public XmlTest, public testing::WithParamInterface<Case>
{
};

template <class Case>
std::string CaseName(const testing::TestParamInfo<Case>& info)
{
    return info.param.name;
}
} // namespace tests::xml
