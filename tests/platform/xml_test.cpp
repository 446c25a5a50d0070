// What the product relies on when it reads: loading, content, paths. For the stand-in's document component and the
// platform's own alike.
#include "tests/support/XmlVerbs.h"

namespace
{
using namespace tests::xml;

Text Nested(std::size_t uLevels)
{
    Text text;
    for (std::size_t i = 0; i < uLevels; ++i)
        text += OLESTR("<a>");
    for (std::size_t i = 0; i < uLevels; ++i)
        text += OLESTR("</a>");
    return text;
}

struct LoadCase
{
    const char* name;
    Text text;
    bool bLoads;
};
const LoadCase loadCases[] = {
    {"empty_text", OLESTR(""), false},
    {"only_blanks", OLESTR("  "), false},
    {"no_markup", OLESTR("plain"), false},
    {"unclosed_root", OLESTR("<a>"), false},
    {"wrong_end", OLESTR("<a></b>"), false},
    {"two_roots", OLESTR("<a/><b/>"), false},
    {"text_after_root", OLESTR("<a/>t"), false},
    {"duplicate_attribute", OLESTR("<a b='1' b='2'/>"), false},
    {"undefined_entity", OLESTR("<a>&x;</a>"), false},
    {"nul_inside", Text(OLESTR("<a>\0</a>"), 8), false},
    {"control_inside", OLESTR("<a>\x01</a>"), false},
    {"reference_to_control", OLESTR("<a>&#1;</a>"), false},
    {"lone_high_surrogate", Text(OLESTR("<a>")) + static_cast<WCHAR>(0xD800) + OLESTR("</a>"), false},
    {"lone_low_surrogate", Text(OLESTR("<a>")) + static_cast<WCHAR>(0xDC00) + OLESTR("x</a>"), false},
    {"far_too_deep", Nested(1000), false},
    {"entities_without_end", OLESTR("<!DOCTYPE a [<!ENTITY e '&f;'><!ENTITY f '&e;'>]><a>&e;</a>"), false},
    {"deep", Nested(256), true},
    {"byte_order_mark", OLESTR("\uFEFF<a/>"), true},
    {"blanks_before_declaration", OLESTR(" \r\n <?xml version='1.0'?><a/>"), true},
    {"declared_utf8", OLESTR("<?xml version=\"1.0\" encoding=\"UTF-8\"?><a>\u00E9</a>"), true},
    {"declared_utf16", OLESTR("<?xml version=\"1.0\" encoding=\"UTF-16\"?><a>\u00E9</a>"), true},
    {"namespace_that_is_no_uri", OLESTR("<a xmlns=\"no URI -->\"/>"), true},
    {"declared_unknown", OLESTR("<?xml version=\"1.0\" encoding=\"no-such\"?><a/>"), false},
    {"declared_ascii", OLESTR("<?xml version=\"1.0\" encoding=\"US-ASCII\"?><a>\u00E9</a>"), true},
    {"surrogate_pair", OLESTR("<a>\U0001F600</a>"), true},
    {"comments_around_root", OLESTR("<!--x--><a/><!--y-->"), true},
    {"document_type_elsewhere", OLESTR("<!DOCTYPE a SYSTEM 'nowhere.dtd'><a/>"), true},
};
using XmlLoadTest = XmlCaseTest<LoadCase>;

TEST_P(XmlLoadTest, LoadsOrLeavesAnEmptyDocument)
{
    const Document document = Loaded(OLESTR("<before/>"));
    EXPECT_EQ(Load(document, GetParam().text), GetParam().bLoads);

    Element root;
    EXPECT_EQ(document->get_documentElement(root.Put()), GetParam().bLoads ? S_OK : S_FALSE);
    EXPECT_EQ(root ? Name(root.Get()) : Text(), GetParam().bLoads ? OLESTR("a") : OLESTR(""));
    CHeld<IXMLDOMParseError> error;
    ASSERT_EQ(document->get_parseError(error.Put()), S_OK);
    LONG lCode = 0;
    error->get_errorCode(&lCode);
    EXPECT_EQ(lCode == 0, GetParam().bLoads);
}
INSTANTIATE_TEST_SUITE_P(Shared, XmlLoadTest, testing::ValuesIn(loadCases), CaseName<LoadCase>);

TEST_F(XmlTest, NullTextDoesNotLoad)
{
    const Document document = NewDocument();
    VARIANT_BOOL bLoaded = VARIANT_TRUE;
    EXPECT_EQ(document->loadXML(nullptr, &bLoaded), S_FALSE);
    EXPECT_EQ(bLoaded, VARIANT_FALSE);
}

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
    {"blank_text_dropped", OLESTR("<a> </a>"), false, OLESTR("a()"), OLESTR("")},
    {"referenced_blank_dropped", OLESTR("<a>&#32;</a>"), false, OLESTR("a()"), OLESTR("")},
    {"blank_text_kept", OLESTR("<a> </a>"), true, OLESTR("a(' ')"), OLESTR(" ")},
    {"space_attribute_keeps", OLESTR("<a xml:space='preserve'> <b/> </a>"), false, OLESTR("a(' 'b()' ')"), OLESTR("  ")},
    {"ends_trimmed", OLESTR("<a> x <b/></a>"), false, OLESTR("a(' x 'b())"), OLESTR("x")},
    {"line_ends_become_line_feeds", OLESTR("<a>1\r\n2\r3</a>"), false, OLESTR("a('1\n2\n3')"), OLESTR("1\n2\n3")},
    {"cdata_stays", OLESTR("<a><![CDATA[ <x> ]]></a>"), false, OLESTR("a([ <x> ])"), OLESTR(" <x> ")},
    {"text_of_descendants", OLESTR("<a>1<!--no--><b>2</b>3</a>"), false, OLESTR("a('1'#no#b('2')'3')"), OLESTR("123")},
    {"references", OLESTR("<a>&lt;&amp;&gt;&#x41;</a>"), false, OLESTR("a('<&>A')"), OLESTR("<&>A")},
    {"nothing_read_from_files", OLESTR("<!DOCTYPE a [<!ENTITY e SYSTEM 'file:///etc/hostname'>]><a>x&e;</a>"), false,
     OLESTR("a('x'?e)"), OLESTR("x")},
};
using XmlContentTest = XmlCaseTest<ContentCase>;

TEST_P(XmlContentTest, HoldsNodesAndText)
{
    const Document document = Loaded(GetParam().text, GetParam().bPreserve);
    const Element root = Root(document);
    EXPECT_EQ(Outline(root.Get()), GetParam().outline);
    EXPECT_EQ(TextOf(root.Get()), GetParam().content);
    VARIANT_BOOL bHasChild = 5;
    EXPECT_GE(root->hasChildNodes(&bHasChild), 0);
    EXPECT_EQ(bHasChild, View(GetParam().outline) == OLESTR("a()") ? VARIANT_FALSE : VARIANT_TRUE);
}
INSTANTIATE_TEST_SUITE_P(Shared, XmlContentTest, testing::ValuesIn(contentCases), CaseName<ContentCase>);

const WCHAR searched[] = OLESTR("<r xmlns='N' xmlns:q='Q'>"
                                "<A id='1'><B id='2'/><q:C id='3'/></A>"
                                "<A id='4'><B id='5'><A id='6'><B id='7'/></A></B></A><B id='8'/>"
                                "</r>");

struct PathCase
{
    const char* name;
    const WCHAR* from; // a path itself; null for the document
    const WCHAR* query;
    const WCHAR* found; // the id attributes in order
};
const PathCase pathCases[] = {
    {"anywhere", OLESTR("/r"), OLESTR("//A/B"), OLESTR("2 5 7")},
    {"anywhere_from_below", OLESTR("//A/B"), OLESTR("//A/B"), OLESTR("2 5 7")},
    {"anywhere_from_document", nullptr, OLESTR("//A/B"), OLESTR("2 5 7")},
    {"anywhere_one_step", OLESTR("/r"), OLESTR("//A"), OLESTR("1 4 6")},
    {"anywhere_three_steps", OLESTR("/r"), OLESTR("//B/A/B"), OLESTR("7")},
    {"absolute", OLESTR("/r"), OLESTR("/r/A/B"), OLESTR("2 5")},
    {"absolute_needs_the_root", OLESTR("/r"), OLESTR("/A/B"), OLESTR("")},
    {"child", OLESTR("/r"), OLESTR("A"), OLESTR("1 4")},
    {"child_of_child", OLESTR("/r"), OLESTR("A/B"), OLESTR("2 5")},
    {"not_the_node_itself", OLESTR("/r/A"), OLESTR("A"), OLESTR("")},
    {"prefix_as_written", OLESTR("/r/A"), OLESTR("q:C"), OLESTR("3")},
    {"prefix_is_part_of_the_name", OLESTR("/r/A"), OLESTR("C"), OLESTR("")},
    {"case_counts", OLESTR("/r"), OLESTR("a"), OLESTR("")},
};
using XmlPathTest = XmlCaseTest<PathCase>;

TEST_P(XmlPathTest, FindsInDocumentOrder)
{
    const Document document = Loaded(searched);
    AnyNode from;
    if (GetParam().from)
        from = Select(document.Get(), GetParam().from);
    IXMLDOMNode* const pFrom = GetParam().from ? from.Get() : document.Get();

    CHeld<IXMLDOMNodeList> list;
    ASSERT_EQ(pFrom->selectNodes(CBstr(GetParam().query).Get(), list.Put()), S_OK);
    LONG lCount = -1;
    ASSERT_EQ(list->get_length(&lCount), S_OK);
    Text found;
    for (LONG i = 0; i < lCount; ++i)
    {
        AnyNode node;
        ASSERT_EQ(list->get_item(i, node.Put()), S_OK);
        Element element;
        ASSERT_EQ(node->QueryInterface(IID_IXMLDOMElement, reinterpret_cast<void**>(element.Put())), S_OK);
        found += (i == 0 ? OLESTR("") : OLESTR(" ")) + Attribute(element, OLESTR("id"));
    }
    EXPECT_EQ(found, GetParam().found);

    const AnyNode first = Select(pFrom, GetParam().query);
    EXPECT_EQ(static_cast<bool>(first), lCount > 0);
    AnyNode item;
    if (first && list->get_item(0, item.Put()) == S_OK)
    {
        EXPECT_EQ(Outline(first.Get()), Outline(item.Get()));
    }
}
INSTANTIATE_TEST_SUITE_P(Shared, XmlPathTest, testing::ValuesIn(pathCases), CaseName<PathCase>);
} // namespace
