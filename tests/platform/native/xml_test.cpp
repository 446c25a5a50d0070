// What the stand-in's document component does where the platform's own may differ or cannot be asked: exact text,
// refusals, planned failures, accounts. Native build only.
#include "tests/support/XmlVerbs.h"

#include "platform/testing/Accounts.h"
#include "platform/testing/Faults.h"

#include <functional>

namespace
{
using namespace tests::xml;
using platform::testing::Account;

struct TextCase
{
    const char* name;
    const WCHAR* text;
    const WCHAR* written; // the document's form
};
const TextCase textCases[] = {
    {"encoding_dropped", u"<?xml version='1.0' encoding='UTF-8' standalone='yes'?><a/>",
     u"<?xml version=\"1.0\" standalone=\"yes\"?>\r\n<a/>\r\n"},
    {"no_indentation", u"<a>\n <b> x </b>\n</a>", u"<a><b> x </b></a>\r\n"},
    {"kept_kinds", u"<!--0--><a>1<!--2--><?p d?><![CDATA[<3>]]></a>", u"<!--0-->\r\n<a>1<!--2--><?p d?><![CDATA[<3>]]></a>\r\n"},
    {"escapes", u"<a b='&quot;&lt;&gt;&amp;&#9;&#10;&#13;'>&lt;&gt;&amp;\"&#13;\n</a>",
     u"<a b=\"&quot;&lt;&gt;&amp;&#9;&#10;&#13;\">&lt;&gt;&amp;\"&#13;\r\n</a>\r\n"},
    {"escaped_reference", u"<a b='&amp;lt;'>&amp;lt;</a>", u"<a b=\"&amp;lt;\">&amp;lt;</a>\r\n"},
    {"namespaces", u"<p:a xmlns:p='P' xmlns='N' p:x='1'><b/></p:a>", u"<p:a xmlns:p=\"P\" xmlns=\"N\" p:x=\"1\"><b/></p:a>\r\n"},
    {"internal_entity", u"<!DOCTYPE a [<!ENTITY e '<b>&f;</b>'><!ENTITY f 'in'>]><a x='&f;&f;'>1&e;2&f;</a>",
     u"<!DOCTYPE a [\r\n<!ENTITY e \"<b>&f;</b>\">\r\n<!ENTITY f \"in\">\r\n]>\r\n"
     u"<a x=\"inin\">1<b>in</b>2in</a>\r\n"},
    {"external_entity", u"<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/hostname'>]><a>&e;</a>",
     u"<!DOCTYPE a [\r\n<!ENTITY e SYSTEM \"file:///etc/hostname\">\r\n]>\r\n<a>&e;</a>\r\n"},
};
using XmlTextTest = XmlCaseTest<TextCase>;

TEST_P(XmlTextTest, IsWrittenAs)
{
    EXPECT_EQ(Xml(Loaded(GetParam().text).Get()), GetParam().written);
}
INSTANTIATE_TEST_SUITE_P(Native, XmlTextTest, testing::ValuesIn(textCases), CaseName<TextCase>);

struct RefusedLoad
{
    const char* name;
    Text text;
};
// Ten entities, each standing for ten of the one before.
Text Amplified(bool bInAttribute)
{
    Text text = u"<!DOCTYPE a [<!ENTITY e0 'xxxxxxxxxx'>";
    for (WCHAR digit = u'1'; digit <= u'9'; ++digit)
    {
        text += Text(u"<!ENTITY e") + digit + u" '";
        for (int i = 0; i < 10; ++i)
            text += Text(u"&e") + static_cast<WCHAR>(digit - 1) + u";";
        text += u"'>";
    }
    return text + (bInAttribute ? u"]><a b='&e9;'/>" : u"]><a>&e9;</a>");
}
const RefusedLoad refusedLoads[] = {
    {"amplified_text", Amplified(false)},
    {"amplified_attribute", Amplified(true)},
    {"undeclared_prefix", u"<p:a/>"},
    {"external_entity_in_attribute", u"<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/hostname'>]><a b='&e;'/>"},
    {"nul_after_root", Text(u"<a/>\0", 5)},
};
using XmlRefusedLoadTest = XmlCaseTest<RefusedLoad>;

TEST_P(XmlRefusedLoadTest, SaysWhy)
{
    const Document document = NewDocument();
    EXPECT_FALSE(Load(document, GetParam().text));
    CHeld<IXMLDOMParseError> error;
    ASSERT_EQ(document->get_parseError(error.Put()), S_OK);
    CBstr reason;
    EXPECT_EQ(error->get_reason(reason.Put()), S_OK);
    EXPECT_FALSE(reason.Str().empty());
}
INSTANTIATE_TEST_SUITE_P(Native, XmlRefusedLoadTest, testing::ValuesIn(refusedLoads), CaseName<RefusedLoad>);

TEST_F(XmlTest, ErrorNamesTheLine)
{
    const Document document = NewDocument();
    EXPECT_FALSE(Load(document, u"\n\n<a>\n</b>"));
    CHeld<IXMLDOMParseError> error;
    ASSERT_EQ(document->get_parseError(error.Put()), S_OK);
    LONG lLine = 0;
    EXPECT_EQ(error->get_line(&lLine), S_OK);
    EXPECT_EQ(lLine, 4);
}

TEST_F(XmlTest, ByteOrderMarkThenBlanksLoad)
{
    EXPECT_TRUE(Load(NewDocument(), u"\uFEFF\r\n<?xml version='1.0'?><a/>"));
}

TEST_F(XmlTest, EmptyDeclarationIsWrittenOnTheTopmostCreatedElement)
{
    const Document document = Loaded(u"<r xmlns='N'><s/></r>");
    AnyNode created;
    ASSERT_EQ(Select(document.Get(), u"//r/s")->appendChild(Create(document, u"a").Get(), created.Put()), S_OK);
    ASSERT_EQ(created->appendChild(Create(document, u"b").Get(), nullptr), S_OK);
    EXPECT_EQ(Xml(document.Get()), u"<r xmlns=\"N\"><s><a xmlns=\"\"><b/></a></s></r>\r\n");
    EXPECT_EQ(Xml(created.Get()), u"<a><b/></a>");
    EXPECT_EQ(Xml(Select(document.Get(), u"//r/s").Get()), u"<s xmlns=\"N\"><a xmlns=\"\"><b/></a></s>");
}

TEST_F(XmlTest, NamespaceSetAsAttributeIsOnlyAnAttribute)
{
    const Document document = Loaded(u"<CCX/>");
    const Element root = Root(document);
    ASSERT_EQ(root->appendChild(Create(document, u"openNetwork").Get(), nullptr), S_OK);
    SetAttribute(root, u"xmlns", u"http://host/CCX");
    EXPECT_EQ(Xml(root.Get()), u"<CCX xmlns=\"http://host/CCX\"><openNetwork/></CCX>");
}

TEST_F(XmlTest, QueriesOutsideTheSubsetFail)
{
    const Document document = Loaded(u"<r><a><b/></a></r>");
    for (const WCHAR* query : {u"", u"/", u"//", u"a/", u"//r//b", u"*", u"a[1]", u"@a", u".", u"..", u"text()", u"a|b", u" a"})
    {
        AnyNode node;
        EXPECT_EQ(Root(document)->selectSingleNode(CBstr(query).Get(), node.Put()), E_FAIL)
            << testing::PrintToString(Text(query));
        CHeld<IXMLDOMNodeList> list;
        EXPECT_EQ(Root(document)->selectNodes(CBstr(query).Get(), list.Put()), E_FAIL) << testing::PrintToString(Text(query));
    }
    EXPECT_EQ(document->selectSingleNode(CBstr(u"r").Get(), nullptr), E_INVALIDARG);
}

TEST_F(XmlTest, EditsThatWouldBreakTheTreeFail)
{
    const Document document = Loaded(u"<r><a/></r>");
    const Document other = Loaded(u"<o/>");
    const Element root = Root(document);
    const AnyNode child = Select(root.Get(), u"a");
    EXPECT_EQ(child->appendChild(root.Get(), nullptr), E_FAIL);
    EXPECT_EQ(child->appendChild(child.Get(), nullptr), E_FAIL);
    EXPECT_EQ(root->appendChild(Root(other).Get(), nullptr), E_FAIL);
    EXPECT_EQ(document->appendChild(Create(document, u"second").Get(), nullptr), E_FAIL);
    EXPECT_EQ(root->appendChild(nullptr, nullptr), E_INVALIDARG);

    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_UNKNOWN;
    reference.punkVal = root.Get();
    EXPECT_EQ(root->insertBefore(child.Get(), reference, nullptr), E_FAIL);

    EXPECT_EQ(root->put_text(CBstr(u"\x01").Get()), E_INVALIDARG);
    EXPECT_EQ(document->put_text(CBstr(u"x").Get()), E_FAIL);
    for (const WCHAR* name : {u"", u"1", u"a b", u"a:b", u"<"})
    {
        Element element;
        EXPECT_EQ(document->createElement(CBstr(name).Get(), element.Put()), E_FAIL) << testing::PrintToString(Text(name));
    }
    VARIANT number;
    VariantInit(&number);
    number.vt = VT_I4;
    EXPECT_EQ(root->setAttribute(CBstr(u"n").Get(), number), E_INVALIDARG);
    EXPECT_EQ(Xml(document.Get()), u"<r><a/></r>\r\n");
}

TEST_F(XmlTest, AttributeMapShowsDeclarations)
{
    const Document document = Loaded(u"<r xmlns='N' xmlns:p='P' a='1'/>");
    CHeld<IXMLDOMNamedNodeMap> attributes;
    ASSERT_EQ(Root(document)->get_attributes(attributes.Put()), S_OK);
    Text names;
    AnyNode attribute;
    for (LONG i = 0; attributes->get_item(i, attribute.Put()) == S_OK; ++i)
        names += Name(attribute.Get()) + u"=" + Value(attribute.Get()) + u" ";
    EXPECT_EQ(names, u"xmlns=N xmlns:p=P a=1 ");
    EXPECT_EQ(document->get_attributes(attributes.Put()), S_FALSE);
}

TEST_F(XmlTest, DeeplyNestedEditsAreWrittenAndReleased)
{
    const Document document = Loaded(u"<r/>");
    AnyNode deepest;
    ASSERT_EQ(document->QueryInterface(IID_IXMLDOMNode, reinterpret_cast<void**>(deepest.Put())), S_OK);
    deepest = Select(document.Get(), u"r");
    for (int i = 0; i < 100'000; ++i)
    {
        AnyNode next;
        ASSERT_EQ(deepest->appendChild(Create(document, u"d").Get(), next.Put()), S_OK);
        deepest = std::move(next);
    }
    EXPECT_TRUE(Xml(document.Get()).ends_with(u"</d></r>\r\n"));
}

struct FaultCase
{
    const char* name;
    std::function<HRESULT(const Document&, const Element&)> call;
};
const FaultCase faultCases[] = {
    {"loadXML",
     [](const Document& document, const Element&)
     {
         VARIANT_BOOL bLoaded = VARIANT_TRUE;
         const HRESULT hr = document->loadXML(CBstr(u"<a/>").Get(), &bLoaded);
         EXPECT_EQ(bLoaded, VARIANT_FALSE);
         return hr;
     }},
    {"get_documentElement",
     [](const Document& document, const Element&)
     {
         Element element;
         const HRESULT hr = document->get_documentElement(element.Put());
         EXPECT_FALSE(element);
         return hr;
     }},
    {"selectSingleNode",
     [](const Document& document, const Element&)
     {
         AnyNode node;
         const HRESULT hr = document->selectSingleNode(CBstr(u"//a").Get(), node.Put());
         EXPECT_FALSE(node);
         return hr;
     }},
    {"get_text", [](const Document&, const Element& root) { return root->get_text(CBstr().Put()); }},
    {"put_text", [](const Document&, const Element& root) { return root->put_text(CBstr(u"x").Get()); }},
    {"get_xml", [](const Document&, const Element& root) { return root->get_xml(CBstr().Put()); }},
    {"hasChildNodes",
     [](const Document&, const Element& root)
     {
         VARIANT_BOOL bHasChild = VARIANT_TRUE;
         return root->hasChildNodes(&bHasChild);
     }},
    {"createElement",
     [](const Document& document, const Element&) { return document->createElement(CBstr(u"x").Get(), Element().Put()); }},
    {"appendChild",
     [](const Document& document, const Element& root) { return root->appendChild(Create(document, u"x").Get(), nullptr); }},
    {"insertBefore", [](const Document& document, const Element& root)
     { return root->insertBefore(Create(document, u"x").Get(), VARIANT(), nullptr); }},
    {"removeChild",
     [](const Document&, const Element& root) { return root->removeChild(Select(root.Get(), u"a").Get(), nullptr); }},
    {"setAttribute", [](const Document&, const Element& root) { return root->setAttribute(CBstr(u"x").Get(), VARIANT()); }},
    {"get_firstChild", [](const Document&, const Element& root) { return root->get_firstChild(AnyNode().Put()); }},
    {"get_nextSibling", [](const Document&, const Element& root) { return root->get_nextSibling(AnyNode().Put()); }},
    {"get_nodeType",
     [](const Document&, const Element& root)
     {
         DOMNodeType type = NODE_ELEMENT;
         return root->get_nodeType(&type);
     }},
    {"get_nodeValue",
     [](const Document&, const Element& root)
     {
         VARIANT value;
         return root->get_nodeValue(&value);
     }},
};
using XmlFaultTest = XmlCaseTest<FaultCase>;

TEST_P(XmlFaultTest, FailsOnceAndChangesNothing)
{
    const Document document = Loaded(u"<r><a/></r>");
    const Element root = Root(document);
    {
        const platform::testing::CFailNth fault(GetParam().name, 1);
        EXPECT_EQ(GetParam().call(document, root), E_FAIL);
        EXPECT_TRUE(fault.HasFired());
    }
    {
        const platform::testing::CFailNth fault(GetParam().name, 1, static_cast<DWORD>(E_ACCESSDENIED));
        EXPECT_EQ(GetParam().call(document, root), E_ACCESSDENIED);
    }
    EXPECT_EQ(Xml(document.Get()), u"<r><a/></r>\r\n");
}
INSTANTIATE_TEST_SUITE_P(Native, XmlFaultTest, testing::ValuesIn(faultCases), CaseName<FaultCase>);

TEST_F(XmlTest, CreationFailsOnRequest)
{
    const platform::testing::CFailNth fault("CreateDocument", 1);
    Document document;
    EXPECT_EQ(CoCreateInstance(documentClass, nullptr, CLSCTX_INPROC_SERVER, IID_IXMLDOMDocument,
                               reinterpret_cast<void**>(document.Put())),
              E_OUTOFMEMORY);
    EXPECT_FALSE(document);
}

TEST_F(XmlTest, EveryObjectIsCountedAndReturned)
{
    const long nObjects = platform::testing::LiveObjects(Account::XmlObject);
    const long nStrings = platform::testing::LiveObjects(Account::Bstr);
    {
        const Document document = Loaded(u"<r a='1'><b>x</b></r>");
        const Element root = Root(document);
        EXPECT_EQ(platform::testing::LiveObjects(Account::XmlObject), nObjects + 2);
        SetAttribute(root, u"c", u"2");
        EXPECT_EQ(Outline(root.Get()), u"r(b('x'))");
    }
    EXPECT_EQ(platform::testing::LiveObjects(Account::XmlObject), nObjects);
    EXPECT_EQ(platform::testing::LiveObjects(Account::Bstr), nStrings);
}
} // namespace
