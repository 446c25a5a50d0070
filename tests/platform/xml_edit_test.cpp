// What the product relies on when it writes: edits, the text form, lifetimes. For the stand-in's document component and
// the platform's own alike.
#include "tests/support/XmlVerbs.h"

#include <thread>
#include <vector>

namespace
{
using namespace tests::xml;

void InsertBefore(const Element& parent, IXMLDOMNode* pChild, IXMLDOMNode* pReference)
{
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = pReference ? VT_UNKNOWN : VT_EMPTY;
    reference.punkVal = pReference;
    EXPECT_EQ(parent->insertBefore(pChild, reference, nullptr), S_OK);
}

struct EditCase
{
    const char* name;
    const WCHAR* text;
    void (*edit)(const Document& document, const Element& root);
    const WCHAR* outline; // of what was written and read again
};
const EditCase editCases[] = {
    {"nothing", OLESTR("<r a='1'><b>x</b><![CDATA[y]]><!--z--></r>"), [](const Document&, const Element&) {},
     OLESTR("r(b('x')[y]#z#)")},
    {"build_below_what_was_appended", OLESTR("<r/>"),
     [](const Document& document, const Element& root)
     {
         AnyNode appended;
         EXPECT_EQ(root->appendChild(Create(document, OLESTR("a")).Get(), appended.Put()), S_OK);
         EXPECT_EQ(appended->appendChild(Create(document, OLESTR("b")).Get(), nullptr), S_OK);
     },
     OLESTR("r(a(b()))")},
    {"insert_before", OLESTR("<r><a/><b/></r>"),
     [](const Document& document, const Element& root)
     {
         InsertBefore(root, Create(document, OLESTR("x")).Get(), Select(root.Get(), OLESTR("b")).Get());
         InsertBefore(root, Create(document, OLESTR("y")).Get(), Select(root.Get(), OLESTR("a")).Get());
         InsertBefore(root, Create(document, OLESTR("z")).Get(), nullptr);
     },
     OLESTR("r(y()a()x()b()z())")},
    {"append_moves", OLESTR("<r><a><c/></a><b/></r>"),
     [](const Document&, const Element& root)
     { EXPECT_EQ(root->appendChild(Select(root.Get(), OLESTR("a")).Get(), nullptr), S_OK); },
     OLESTR("r(b()a(c()))")},
    {"remove", OLESTR("<r><a/><b>1</b><c/></r>"),
     [](const Document&, const Element& root)
     {
         const AnyNode child = Select(root.Get(), OLESTR("b"));
         AnyNode removed;
         EXPECT_EQ(root->removeChild(child.Get(), removed.Put()), S_OK);
         EXPECT_EQ(Outline(removed.Get()), OLESTR("b('1')"));
         EXPECT_EQ(root->removeChild(child.Get(), nullptr), E_INVALIDARG);
     },
     OLESTR("r(a()c())")},
    {"text_replaces_everything", OLESTR("<r>1<a/><!--x-->2</r>"),
     [](const Document&, const Element& root)
     {
         EXPECT_EQ(root->put_text(CBstr(OLESTR("new")).Get()), S_OK);
         EXPECT_EQ(TextOf(root.Get()), OLESTR("new"));
     },
     OLESTR("r('new')")},
    {"empty_text_leaves_nothing", OLESTR("<r>1</r>"),
     [](const Document&, const Element& root) { EXPECT_EQ(root->put_text(CBstr(OLESTR("")).Get()), S_OK); }, OLESTR("r()")},
    {"text_is_escaped", OLESTR("<r/>"),
     [](const Document&, const Element& root) { EXPECT_EQ(root->put_text(CBstr(OLESTR("<&>\"' ]]>")).Get()), S_OK); },
     OLESTR("r('<&>\"' ]]>')")},
    {"every_script", OLESTR("<r>\u00E9\u4E2D\U0001F600</r>"), [](const Document&, const Element&) {},
     OLESTR("r('\u00E9\u4E2D\U0001F600')")},
    {"namespace_set_as_attribute", OLESTR("<CCX/>"),
     [](const Document& document, const Element& root)
     {
         EXPECT_EQ(root->appendChild(Create(document, OLESTR("openNetwork")).Get(), nullptr), S_OK);
         SetAttribute(root, OLESTR("xmlns"), OLESTR("http://host/CCX"));
         EXPECT_EQ(Xml(root.Get()).find(OLESTR("xmlns=\"\"")), Text::npos);
         const Document again = Loaded(Xml(root.Get()));
         CBstr uri;
         EXPECT_EQ(Root(again)->get_namespaceURI(uri.Put()), S_OK);
         EXPECT_EQ(uri.Str(), OLESTR("http://host/CCX"));
         EXPECT_TRUE(Select(Root(again).Get(), OLESTR("//CCX/openNetwork")));
     },
     OLESTR("CCX(openNetwork())")},
    {"namespace_in_force", OLESTR("<r xmlns='N'><a/></r>"),
     [](const Document& document, const Element& root)
     {
         AnyNode appended;
         EXPECT_EQ(root->appendChild(Create(document, OLESTR("b")).Get(), appended.Put()), S_OK);
         EXPECT_EQ(appended->appendChild(Create(document, OLESTR("c")).Get(), nullptr), S_OK);
         EXPECT_EQ(appended->appendChild(Create(document, OLESTR("d")).Get(), nullptr), S_OK);
         const Text xml = Xml(document.Get());
         const Text empty = OLESTR(" xmlns=\"\"");
         EXPECT_EQ(xml.find(empty), xml.rfind(empty)) << "the empty declaration is written once at most";
     },
     OLESTR("r(a()b(c()d()))")},
    {"attribute", OLESTR("<r a='1' b='2'/>"),
     [](const Document&, const Element& root)
     {
         SetAttribute(root, OLESTR("a"), OLESTR("\"<&>'"));
         const Document again = Loaded(Xml(root.Get()));
         EXPECT_EQ(Attribute(Root(again), OLESTR("a")), OLESTR("\"<&>'"));
         EXPECT_EQ(Attribute(Root(again), OLESTR("b")), OLESTR("2"));
         EXPECT_EQ(Attribute(Root(again), OLESTR("c")), OLESTR("(none)"));
     },
     OLESTR("r()")},
};
using XmlEditTest = XmlCaseTest<EditCase>;

TEST_P(XmlEditTest, WrittenTextReadsBack)
{
    const Document document = Loaded(GetParam().text);
    const Element root = Root(document);
    GetParam().edit(document, root);
    EXPECT_EQ(Outline(root.Get()), GetParam().outline);
    EXPECT_EQ(Outline(Root(Loaded(Xml(root.Get()))).Get()), GetParam().outline);
    EXPECT_EQ(Outline(Root(Loaded(Xml(document.Get()))).Get()), GetParam().outline);
}
INSTANTIATE_TEST_SUITE_P(Shared, XmlEditTest, testing::ValuesIn(editCases), CaseName<EditCase>);

TEST_F(XmlTest, OnlyTheDocumentWritesTheDeclaration)
{
    const Document document = Loaded(OLESTR("<?xml version=\"1.0\"?><r><a/></r>"));
    EXPECT_TRUE(Xml(document.Get()).starts_with(OLESTR("<?xml version=\"1.0\"?>\r\n<r>")));
    EXPECT_TRUE(Xml(Root(document).Get()).starts_with(OLESTR("<r>")));
    EXPECT_TRUE(Xml(Loaded(OLESTR("<r/>")).Get()).starts_with(OLESTR("<r/>")));
}

TEST_F(XmlTest, AnElementNameMustBeOne)
{
    const Document document = Loaded(OLESTR("<r/>"));
    Element element;
    EXPECT_LT(document->createElement(CBstr(OLESTR("")).Get(), element.Put()), 0);
    EXPECT_FALSE(element);
}

TEST_F(XmlTest, NodesSurviveTheirDocument)
{
    Document document = Loaded(OLESTR("<r><a>1</a><b/></r>"));
    Element root = Root(document);
    const Element created = Create(document, OLESTR("c"));
    AnyNode child = Select(root.Get(), OLESTR("a"));
    AnyNode removed;
    ASSERT_EQ(root->removeChild(child.Get(), removed.Put()), S_OK);
    document.Reset();

    EXPECT_EQ(root->appendChild(created.Get(), nullptr), S_OK);
    EXPECT_EQ(Outline(root.Get()), OLESTR("r(b()c())"));
    root.Reset();
    child.Reset();
    EXPECT_EQ(Outline(removed.Get()), OLESTR("a('1')"));
    AnyNode parent;
    EXPECT_EQ(removed->get_parentNode(parent.Put()), S_FALSE);
    EXPECT_FALSE(parent);
}

TEST_F(XmlTest, NodesSurviveTheNextLoad)
{
    const Document document = Loaded(OLESTR("<r><a>1</a></r>"));
    const AnyNode old = Select(document.Get(), OLESTR("//a"));
    ASSERT_TRUE(Load(document, OLESTR("<other/>")));
    EXPECT_EQ(Outline(old.Get()), OLESTR("a('1')"));
    EXPECT_EQ(Outline(Root(document).Get()), OLESTR("other()"));
}

TEST_F(XmlTest, ThreadsUseDocumentsOfTheirOwn)
{
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(
            []
            {
                ASSERT_GE(CoInitializeEx(nullptr, COINIT_MULTITHREADED), 0);
                for (int k = 0; k < 20; ++k)
                {
                    const Document document = Loaded(OLESTR("<r><a>1</a></r>"));
                    const Element root = Root(document);
                    EXPECT_EQ(root->appendChild(Create(document, OLESTR("b")).Get(), nullptr), S_OK);
                    EXPECT_FALSE(Load(NewDocument(), OLESTR("<r>")));
                    EXPECT_EQ(Outline(Root(Loaded(Xml(root.Get()))).Get()), OLESTR("r(a('1')b())"));
                }
                CoUninitialize();
            });
    for (std::thread& thread : threads)
        thread.join();
}
} // namespace
