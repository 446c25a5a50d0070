// The layer over the document component, where a component that means well does not bring it.
#include "platform/testing/Faults.h"
#include "profile/DocumentPrologue.h"
#include "profile/XmlDocument.h"
#include "tests/support/TestFolder.h"
#include "tests/support/XmlVerbs.h"

#include <chrono>
#include <cstring>
#include <vector>

namespace
{
using platform::testing::CountCalls;
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
        {CWideString(1000000, OLESTR(' ')) + OLESTR("<!DOCTYPE a><a/>"), true},
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

// Profiles that nobody wrote in good faith are read or refused, and quickly.
TEST_F(XmlDocument, IsDoneWithLongTextsInTime)
{
    constexpr std::size_t cchLong = 5 * 1024 * 1024 / sizeof(WCHAR);
    // Sanitizers slow everything down by about as much.
    constexpr auto longest = std::chrono::seconds(2) * SLOWED_DOWN;
    const auto repeated = [](std::size_t nCount, CWideView piece)
    {
        CWideString text;
        while (nCount-- != 0)
            text += piece;
        return text;
    };
    const struct
    {
        CWideString text;
        bool bLoads;
    } rows[] = {
        {OLESTR("<a>") + CWideString(cchLong, OLESTR('x')) + OLESTR("</a>"), true},
        {CWideString(OLESTR("<a/>")) + WCHAR{} + OLESTR("<!DOCTYPE"), true},
        {OLESTR("<a>") + CWideString(cchLong, OLESTR('x')), false},
        {repeated(cchLong / 20, OLESTR("<a/>")), false},
        {repeated(100000, OLESTR("<a>")) + repeated(100000, OLESTR("</a>")), false},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(tests::Narrow(row.text.substr(0, 80)));
        const auto begun = std::chrono::steady_clock::now();
        CXmlDocument document;
        EXPECT_EQ(row.bLoads, document.Load(row.text.c_str()));
        EXPECT_EQ(row.bLoads, document.Root().Text().has_value());
        EXPECT_LT(std::chrono::steady_clock::now() - begun, longest);
    }
}

// The component is the document's own; an explicit instantiation may name it all the same.
template <CComRef<IXMLDOMDocument> CXmlDocument::*pMember>
struct CComponentOf
{
    friend IXMLDOMDocument* ComponentOf(const CXmlDocument& document)
    {
        return (document.*pMember).Get();
    }
};
template struct CComponentOf<&CXmlDocument::m_document>;
IXMLDOMDocument* ComponentOf(const CXmlDocument& document);

HRESULT hrLoad;
VARIANT_BOOL bLoad;
HRESULT STDMETHODCALLTYPE AnswerLoad(IXMLDOMDocument*, BSTR, VARIANT_BOOL* pbSuccessful)
{
    *pbSuccessful = bLoad;
    return hrLoad;
}

TEST_F(XmlDocument, HasLoadedWhenResultOrFlagSaysSo)
{
    CXmlDocument document;
    // One component's table of functions up to this one, exchanged for a copy with another answer.
    const auto pLoad = &IXMLDOMDocument::loadXML;
    std::size_t cbSlot = 0;
    std::memcpy(&cbSlot, &pLoad, sizeof(cbSlot));
    const std::size_t nSlot = (cbSlot - 1) / sizeof(void*);
    auto*** const ppTable = reinterpret_cast<void***>(ComponentOf(document));
    void** const pTable = *ppTable;
    std::vector<void*> table(pTable, pTable + nSlot);
    table.push_back(reinterpret_cast<void*>(&AnswerLoad));
    *ppTable = table.data();
    for (const bool bResult : {true, false})
        for (const bool bFlag : {true, false})
        {
            hrLoad = bResult ? S_OK : S_FALSE;
            bLoad = bFlag ? VARIANT_TRUE : VARIANT_FALSE;
            EXPECT_EQ(bResult || bFlag, document.Load(OLESTR("<a/>"))) << bResult << bFlag;
        }
    *ppTable = pTable;
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
