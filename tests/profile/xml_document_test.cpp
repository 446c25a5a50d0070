// The layer over the document component, where a component that means well does not bring it.
#include "platform/testing/Faults.h"
#include "profile/DocumentPrologue.h"
#include "profile/XmlDocument.h"
#include "tests/support/TestFolder.h"
#include "tests/support/XmlTest.h"

#include <vector>

namespace
{
using platform::testing::CountCalls;
using platform::testing::CountFaults;
using platform::testing::PlanFault;
constexpr unsigned never = 0xFFFFFFFF;

class XmlDocument : public tests::xml::XmlTest
{
protected:
    void TearDown() override
    {
        platform::testing::ClearFaults();
        XmlTest::TearDown();
    }
};

// A document type is where entities and other files come from: the component never sees one.
TEST_F(XmlDocument, RefusesADocumentTypeWhereverItStands)
{
    const struct
    {
        CWideString text;
        bool bHasOne;
    } rows[] = {
        {OLESTR("<!DOCTYPE a><a/>"), true},
        {OLESTR("\uFEFF<!DOCTYPE a><a/>"), true},
        {OLESTR("\uFEFF \t\r\n<?xml version='1.0'?>\n<!-- > --><?b?> <!DOCTYPE a><a/>"), true},
        {OLESTR("<?xml version='1.0'?><!-- <!DOCTYPE a> --><a/>"), false},
        {OLESTR("<!-- never ends <!DOCTYPE a>"), false},
        {OLESTR(" "), false},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(tests::Narrow(row.text.substr(0, 80)));
        EXPECT_EQ(row.bHasOne, HasDocumentType(row.text.c_str()));
        PlanFault("loadXML", never, 1);
        EXPECT_EQ(row.text.ends_with(OLESTR("--><a/>")), CXmlDocument().Load(row.text.c_str()));
        EXPECT_EQ(row.bHasOne ? 0u : 1u, CountCalls("loadXML"));
    }
}

// Only the stand-in can be made to say one thing by its result and another by its flag.
TEST_F(XmlDocument, HasLoadedWhenResultOrFlagSaysSo)
{
    const auto loads = [] { return CXmlDocument().Load(OLESTR("<a/>")); };
    PlanFault("loadXML's result", 1, 1);
    EXPECT_TRUE(loads());
    PlanFault("loadXML's flag", 1, 2);
    EXPECT_TRUE(loads());
    PlanFault("loadXML's result", 1, 1);
    const bool bLoads = loads();
    EXPECT_EQ(CountFaults("loadXML's flag") != 2, bLoads);
}

// Deeper trees than a text can bring must not use up the host's stack.
TEST_F(XmlDocument, ReadsNoTextBelowItsDepth)
{
    CXmlDocument document;
    ASSERT_TRUE(document.Load(OLESTR("<a/>")));
    CXmlNode deepest = document.Root();
    for (int nDepth = 1; nDepth <= 256; ++nDepth)
        deepest = document.AppendElement(deepest, OLESTR("a"));
    EXPECT_TRUE(document.Root().Text().has_value());
    document.AppendElement(deepest, OLESTR("a"));
    EXPECT_FALSE(document.Root().Text().has_value());
}

// Some components write an attribute of a null name, and so a text that never loads again.
TEST_F(XmlDocument, SetsNoAttributeWithoutMemoryForNameOrValue)
{
    CXmlDocument document;
    ASSERT_TRUE(document.Load(OLESTR("<a/>")));
    PlanFault("setAttribute", never, 1);
    for (const unsigned uNth : {1u, 2u})
    {
        PlanFault("SysAllocString", uNth, 1);
        document.Root().SetAttribute(OLESTR("b"), OLESTR("c"));
        EXPECT_EQ(0u, CountCalls("setAttribute"));
    }
}
} // namespace
