// What the product relies on in the document component, the stand-in's and the platform's own alike.
#include "tests/support/XmlVerbs.h"

namespace
{
using namespace tests::xml;

CWideString Nested(std::size_t nLevels)
{
    CWideString text = OLESTR("</a>");
    for (std::size_t i = 1; i < nLevels; ++i)
        text = OLESTR("<a>") + text + OLESTR("</a>");
    return OLESTR("<a>") + text;
}

struct LoadCase
{
    const char* name;
    CWideString text;
    bool bLoads;
};
const LoadCase loadCases[] = {
    {"only_blanks", OLESTR("  "), false},
    {"two_roots", OLESTR("<a/><b/>"), false},
    {"duplicate_attribute", OLESTR("<a b='1' b='2'/>"), false},
    {"undefined_entity", OLESTR("<a>&x;</a>"), false},
    {"nul_inside", CWideString(OLESTR("<a>\0</a>"), 8), false},
    {"control_inside", OLESTR("<a>\x01</a>"), false},
    {"reference_to_control", OLESTR("<a>&#1;</a>"), false},
    {"lone_high_surrogate", CWideString(OLESTR("<a>")) + WCHAR{0xD800} + OLESTR("</a>"), false},
    {"lone_low_surrogate", CWideString(OLESTR("<a>")) + WCHAR{0xDC00} + OLESTR("x</a>"), false},
    {"unknown_encoding", OLESTR("<?xml version=\"1.0\" encoding=\"no-such\"?><a/>"), false},
    {"far_too_deep", Nested(1000), false},
    {"deep", Nested(256), true},
    {"byte_order_mark", OLESTR("\uFEFF<a/>"), true},
    {"blanks_before_declaration", OLESTR(" \r\n <?xml version='1.0'?><a/>"), true},
    {"declared_utf16", OLESTR("<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>\u00E9</a>"), true},
    {"declared_ascii", OLESTR("<?xml version='1.0' encoding='US-ASCII'?><a>\u00E9</a>"), true},
    {"encoding_elsewhere", OLESTR("<a encoding=\"no-such\"/>"), true},
    {"namespace_that_is_no_uri", OLESTR("<a xmlns=\"no URI -->\"/>"), true},
    {"surrogate_pair", OLESTR("<a>\U0001F600</a>"), true},
};
using XmlLoadTest = XmlCaseTest<LoadCase>;

TEST_P(XmlLoadTest, LoadsOrLeavesAnEmptyDocument)
{
    const Document document = Loaded(OLESTR("<before>1</before>"));
    const Element before = Root(document);
    EXPECT_EQ(Load(document, GetParam().text), GetParam().bLoads);
    EXPECT_EQ(static_cast<bool>(Root(document)), GetParam().bLoads);
    EXPECT_EQ(Outline(before.Get()), OLESTR("before('1')")) << "what is held of the document before lives on";
}
INSTANTIATE_TEST_SUITE_P(Shared, XmlLoadTest, testing::ValuesIn(loadCases), CaseName<LoadCase>);

struct ContentCase
{
    const char* name;
    const WCHAR* text;
    bool bPreserve;
    const WCHAR* outline;
    const WCHAR* content;
};
const ContentCase contentCases[] = {
    {"indentation_dropped", OLESTR("<a>\r\n <b/>\r\n <c/>\r\n</a>"), false, OLESTR("a(b()c())"), OLESTR("")},
    {"indentation_kept", OLESTR("<a> <b/></a>"), true, OLESTR("a(' 'b())"), OLESTR(" ")},
    {"referenced_blank_dropped", OLESTR("<a>&#32;</a>"), false, OLESTR("a()"), OLESTR("")},
    {"space_attribute_keeps", OLESTR("<a xml:space='preserve'> <b/> </a>"), false, OLESTR("a(' 'b()' ')"), OLESTR("  ")},
    {"ends_trimmed", OLESTR("<a> x <b/></a>"), false, OLESTR("a(' x 'b())"), OLESTR("x")},
    {"line_ends_become_line_feeds", OLESTR("<a>1\r\n2\r3</a>"), false, OLESTR("a('1\n2\n3')"), OLESTR("1\n2\n3")},
    {"all_kinds", OLESTR("<a>1<!--no--><b>&lt;&#x41;</b><![CDATA[<3>]]></a>"), false, OLESTR("a('1'#no#b('<A')|<3>|)"),
     OLESTR("1<A<3>")},
};
using XmlContentTest = XmlCaseTest<ContentCase>;

TEST_P(XmlContentTest, HoldsNodesAndText)
{
    const Element root = Root(Loaded(GetParam().text, GetParam().bPreserve));
    EXPECT_EQ(Outline(root.Get()), GetParam().outline);
    CBstr text;
    EXPECT_EQ(root->get_text(text.Put()), S_OK);
    EXPECT_EQ(text.View(), GetParam().content);
    VARIANT_BOOL bHasChild = 5;
    EXPECT_GE(root->hasChildNodes(&bHasChild), 0);
    EXPECT_EQ(bHasChild, CWideView(GetParam().outline) == OLESTR("a()") ? VARIANT_FALSE : VARIANT_TRUE);
}
INSTANTIATE_TEST_SUITE_P(Shared, XmlContentTest, testing::ValuesIn(contentCases), CaseName<ContentCase>);

struct PathCase
{
    const char* name;
    const WCHAR* from; // a path itself
    const WCHAR* query;
    const WCHAR* found; // nothing when empty
};
const PathCase pathCases[] = {
    {"anywhere", OLESTR("/r"), OLESTR("//B/C"), OLESTR("C('3')")},
    {"anywhere_from_below", OLESTR("/r/B"), OLESTR("//A/C"), OLESTR("C('1')")},
    {"document_order", OLESTR("/r"), OLESTR("//D/E"), OLESTR("E('5')")},
    {"absolute", OLESTR("/r/A"), OLESTR("/r/B/C"), OLESTR("C('3')")},
    {"absolute_needs_the_root", OLESTR("/r"), OLESTR("/A/C"), OLESTR("")},
    {"child_of_child", OLESTR("/r"), OLESTR("B/C"), OLESTR("C('3')")},
    {"grandchild_is_no_child", OLESTR("/r"), OLESTR("C"), OLESTR("")},
    {"not_the_node_itself", OLESTR("/r/A"), OLESTR("A"), OLESTR("")},
    {"prefixed_element", OLESTR("/r/A"), OLESTR("P"), OLESTR("")},
    {"case_counts", OLESTR("/r"), OLESTR("a"), OLESTR("")},
};
using XmlPathTest = XmlCaseTest<PathCase>;

TEST_P(XmlPathTest, FindsTheFirst)
{
    const Element root = Root(Loaded(OLESTR("<r xmlns='N' xmlns:q='Q'><A><q:P/><C>1</C></A>"
                                            "<B><C>3</C><C>4</C></B><D><D><E>5</E></D><E>6</E></D></r>")));
    const AnyNode found = Select(Select(root.Get(), GetParam().from).Get(), GetParam().query);
    EXPECT_EQ(found ? Outline(found.Get()) : CWideString(), GetParam().found);
}
INSTANTIATE_TEST_SUITE_P(Shared, XmlPathTest, testing::ValuesIn(pathCases), CaseName<PathCase>);

Element Create(const Document& document, const WCHAR* szName)
{
    Element element;
    EXPECT_EQ(document->createElement(CBstr(szName).Get(), element.Put()), S_OK);
    return element;
}

TEST_F(XmlTest, EditsShowInTheTextReadAgain)
{
    Document document = Loaded(OLESTR("<r><a/><b>1<x/></b><c/></r>"));
    Element root = Root(document);
    AnyNode removed;
    EXPECT_EQ(root->removeChild(Select(root.Get(), OLESTR("b")).Get(), removed.Put()), S_OK);
    EXPECT_EQ(root->removeChild(removed.Get(), nullptr), E_INVALIDARG);
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_UNKNOWN;
    const AnyNode c = Select(root.Get(), OLESTR("c"));
    reference.punkVal = c.Get();
    AnyNode inserted;
    EXPECT_EQ(root->insertBefore(Create(document, OLESTR("d")).Get(), reference, inserted.Put()), S_OK);
    AnyNode appended;
    EXPECT_EQ(inserted->appendChild(Create(document, OLESTR("e")).Get(), appended.Put()), S_OK);
    EXPECT_EQ(appended->put_text(CBstr(OLESTR("old")).Get()), S_OK);
    EXPECT_EQ(appended->put_text(CBstr(OLESTR("<&>\"' ]]>")).Get()), S_OK);
    const CWideString outline = OLESTR("r(a()d(e('<&>\"' ]]>'))c())");
    EXPECT_EQ(Outline(Root(Loaded(Xml(root))).Get()), outline);
    EXPECT_EQ(Outline(Root(Loaded(Xml(document))).Get()), outline);

    document = Document();
    root = Element();
    EXPECT_EQ(Outline(removed.Get()), OLESTR("b('1'x())")) << "a node outlives its document, and being taken out";
    EXPECT_EQ(removed->put_text(CBstr(OLESTR("")).Get()), S_OK);
    EXPECT_EQ(Outline(removed.Get()), OLESTR("b()"));
    EXPECT_EQ(Outline(inserted.Get()), OLESTR("d(e('<&>\"' ]]>'))"));
}

// The product writes a namespace this way, and its elements must be found in it when the text is read again.
TEST_F(XmlTest, NamespaceSetAsAttributeIsInForceInTheText)
{
    const Document document = Loaded(OLESTR("<CCX/>"));
    const Element root = Root(document);
    EXPECT_EQ(root->appendChild(Create(document, OLESTR("open")).Get(), nullptr), S_OK);
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_BSTR;
    const CBstr bstrValue(OLESTR("N\"<&>'\u00E9"));
    value.bstrVal = bstrValue.Get();
    EXPECT_EQ(root->setAttribute(CBstr(OLESTR("xmlns")).Get(), value), S_OK);
    EXPECT_EQ(Xml(root).find(OLESTR("xmlns=\"\"")), CWideString::npos);
    EXPECT_TRUE(Select(Root(Loaded(Xml(root))).Get(), OLESTR("//CCX/open")));
}
} // namespace
