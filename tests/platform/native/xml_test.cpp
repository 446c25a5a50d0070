// What the stand-in's document component does where the platform's own differs between versions: exact text, refusedLoads.
#include "tests/support/XmlVerbs.h"

namespace
{
using namespace tests::xml;

struct TextCase
{
    const char* name;
    const WCHAR* text;
    const WCHAR* written;
};
const TextCase textCases[] = {
    {"encoding_dropped", u"<?xml version='1.0' encoding='UTF-8' standalone='yes'?><a/>",
     u"<?xml version=\"1.0\" standalone=\"yes\"?>\r\n<a/>\r\n"},
    {"kept_kinds", u"<!--0--><a>1<!--2--><?p d?><![CDATA[<3>\n]]></a>",
     u"<!--0-->\r\n<a>1<!--2--><?p d?><![CDATA[<3>\r\n]]></a>\r\n"},
    {"escapes", u"<a b='&quot;&lt;&gt;&amp;amp;&#9;&#10;&#13;\u00E9'>&lt;&gt;&amp;amp;\"&#13;\n\u00E9</a>",
     u"<a b=\"&quot;&lt;&gt;&amp;amp;&#9;&#10;&#13;\u00E9\">&lt;&gt;&amp;amp;\"&#13;\r\n\u00E9</a>\r\n"},
    {"namespaces", u"<p:a xmlns:p='P' xmlns='\"&amp;&lt;' p:x='1'><b xmlns=''/></p:a>",
     u"<p:a xmlns:p=\"P\" xmlns=\"&quot;&amp;&lt;\" p:x=\"1\"><b xmlns=\"\"/></p:a>\r\n"},
};
using XmlTextTest = XmlCaseTest<TextCase>;

TEST_P(XmlTextTest, IsWrittenAs)
{
    EXPECT_EQ(Xml(Loaded(GetParam().text)), GetParam().written);
}
INSTANTIATE_TEST_SUITE_P(Native, XmlTextTest, testing::ValuesIn(textCases), CaseName<TextCase>);

TEST_F(XmlTest, EmptyDeclarationIsWrittenOnTheTopmostCreatedElement)
{
    const Document document = Loaded(u"<r xmlns='N'><s/></r>");
    Element created, below;
    ASSERT_EQ(document->createElement(CBstr(u"a").Get(), created.Put()), S_OK);
    ASSERT_EQ(document->createElement(CBstr(u"b").Get(), below.Put()), S_OK);
    ASSERT_EQ(Select(Root(document).Get(), u"s")->appendChild(created.Get(), nullptr), S_OK);
    ASSERT_EQ(created->appendChild(below.Get(), nullptr), S_OK);
    EXPECT_EQ(Xml(document), u"<r xmlns=\"N\"><s><a xmlns=\"\"><b/></a></s></r>\r\n");
    EXPECT_EQ(below->appendChild(created.Get(), nullptr), E_FAIL) << "into itself";
    EXPECT_EQ(below->appendChild(Root(Loaded(u"<o/>")).Get(), nullptr), E_FAIL) << "of another document";
}

// What stands before them hides none.
CWideString WithAttributes(int nAttributes)
{
    CWideString text = u"<!-- <a b=' --><a";
    for (int i = 0; i < nAttributes; ++i)
        text += CWideString(u" _") + static_cast<WCHAR>(u'\u4E00' + i) + u"='>'";
    return text + u"/>";
}

struct RefusedLoad
{
    const char* name;
    CWideString text;
    LONG lLine;
    const WCHAR* reason; // its beginning
};
const RefusedLoad refusedLoads[] = {
    {"line_counts_from_the_start", u"\n\n<a>\n</b>", 4, u"Opening and ending tag mismatch"},
    {"undeclared_prefix", u"<p:a/>", 1, u"Namespace prefix p on a is not defined"},
    {"document_type", u"<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>", 0, u"The text has a document type"},
    {"high_surrogate_at_the_end", CWideString(u"<a/>") + WCHAR{0xD800}, 0, u"The text is too long, or not well-formed UTF-16"},
    {"nul_after_root", CWideString(u"<a/>\0", 5), 0, u"The text is too long, or not well-formed UTF-16"},
    {"flood_of_attributes", WithAttributes(4001), 0, u"An element has too many attributes"},
};
using XmlRefusedLoadTest = XmlCaseTest<RefusedLoad>;

TEST_P(XmlRefusedLoadTest, SaysWhyAndWhere)
{
    const Document document = NewDocument();
    EXPECT_FALSE(Load(document, GetParam().text));
    CComRef<IXMLDOMParseError> error;
    ASSERT_EQ(document->get_parseError(error.Put()), S_OK);
    CBstr reason;
    EXPECT_EQ(error->get_reason(reason.Put()), S_OK);
    EXPECT_TRUE(reason.View().starts_with(GetParam().reason)) << testing::PrintToString(reason.View());
    LONG lLine = -1;
    EXPECT_EQ(error->get_line(&lLine), S_OK);
    EXPECT_EQ(lLine, GetParam().lLine);
}
INSTANTIATE_TEST_SUITE_P(Native, XmlRefusedLoadTest, testing::ValuesIn(refusedLoads), CaseName<RefusedLoad>);
} // namespace
