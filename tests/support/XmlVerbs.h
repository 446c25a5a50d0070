// Short verbs over the XML document component for tests; each checks that result and outcome agree.
#pragma once

#include "values/Bstr.h"
#include "values/ComRef.h"

#include <msxml2.h>

#include <gtest/gtest.h>

namespace tests::xml
{
using Document = CComRef<IXMLDOMDocument>;
using Element = CComRef<IXMLDOMElement>;
using AnyNode = CComRef<IXMLDOMNode>;

inline Document NewDocument(bool bPreserveWhiteSpace = false)
{
    constexpr CLSID documentClass = {0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
    Document document;
    EXPECT_EQ(CoCreateInstance(documentClass, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument, document.PutVoid()), S_OK);
    EXPECT_EQ(document->put_async(VARIANT_FALSE), S_OK);
    EXPECT_EQ(document->put_validateOnParse(VARIANT_FALSE), S_OK);
    EXPECT_EQ(document->put_resolveExternals(VARIANT_FALSE), S_OK);
    EXPECT_EQ(document->put_preserveWhiteSpace(bPreserveWhiteSpace ? VARIANT_TRUE : VARIANT_FALSE), S_OK);
    return document;
}

inline bool Load(const Document& document, CWideView text)
{
    VARIANT_BOOL bLoaded = VARIANT_FALSE;
    const HRESULT hr = document->loadXML(CBstr(text).Get(), &bLoaded);
    EXPECT_EQ(hr, bLoaded == VARIANT_TRUE ? S_OK : S_FALSE);
    return hr == S_OK;
}

inline Document Loaded(CWideView text, bool bPreserveWhiteSpace = false)
{
    Document document = NewDocument(bPreserveWhiteSpace);
    EXPECT_TRUE(Load(document, text));
    return document;
}

inline Element Root(const Document& document)
{
    Element root;
    const HRESULT hr = document->get_documentElement(root.Put());
    EXPECT_EQ(hr, root ? S_OK : S_FALSE);
    return root;
}

inline AnyNode Select(IXMLDOMNode* pFrom, CWideView query)
{
    AnyNode node;
    const HRESULT hr = pFrom->selectSingleNode(CBstr(query).Get(), node.Put());
    EXPECT_EQ(hr, node ? S_OK : S_FALSE);
    return node;
}

template <class Node>
CWideString Xml(const CComRef<Node>& node)
{
    CBstr xml;
    EXPECT_EQ(node->get_xml(xml.Put()), S_OK);
    return CWideString(xml.View());
}

// Names, texts and nesting of a subtree, without anything that two writers may write differently.
inline CWideString Outline(IXMLDOMNode* pNode)
{
    DOMNodeType type = NODE_INVALID;
    EXPECT_EQ(pNode->get_nodeType(&type), S_OK);
    if (type != NODE_ELEMENT)
    {
        VARIANT value;
        VariantInit(&value);
        EXPECT_EQ(pNode->get_nodeValue(&value), S_OK);
        const CWideString mark = type == NODE_TEXT ? OLESTR("'") : type == NODE_CDATA_SECTION ? OLESTR("|") : OLESTR("#");
        const CWideString text = mark + value.bstrVal + mark;
        VariantClear(&value);
        return text;
    }
    CBstr name;
    EXPECT_EQ(pNode->get_nodeName(name.Put()), S_OK);
    CWideString outline = CWideString(name.View()) + OLESTR("(");
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
