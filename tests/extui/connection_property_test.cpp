// The connection property without its dialog: name, what it does not offer, profiles made whole on selection.
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"
#include "tests/support/XmlVerbs.h"

namespace
{
using tests::xml::CaseName;
using Lines = std::vector<std::string>;

constexpr BOOL untouchedBool = 77;

class ConnectionProperty : public testing::Test
{
protected:
    Lines TakeLines()
    {
        return m_log.Take();
    }
    IDot11ExtUIProperty& Property() const
    {
        return *m_property.Get();
    }

private:
    tests::CTraceLog m_log;
    tests::CModuleUnderTest m_module;
    CComRef<IDot11ExtUIProperty> m_property = m_module.Property(propertyKindConnection);
};

TEST_F(ConnectionProperty, NameAndDialog)
{
    CBstr bstrName;
    BOOL bHasDialog = untouchedBool;
    TakeLines();
    EXPECT_EQ(S_OK, Property().Dot11ExtUIPropertyGetName(bstrName.Put()));
    EXPECT_EQ("Korvane Connection Settings", tests::TextOf(bstrName));
    EXPECT_EQ(E_POINTER, Property().Dot11ExtUIPropertyGetName(nullptr));
    EXPECT_EQ(S_OK, Property().Dot11ExtUIPropertyHasDialog(&bHasDialog));
    EXPECT_EQ(TRUE, bHasDialog);
    EXPECT_EQ(E_INVALIDARG, Property().Dot11ExtUIPropertyHasDialog(nullptr));
    EXPECT_EQ(Lines(), TakeLines());
}

TEST_F(ConnectionProperty, WhatIsNotOfferedTouchesNothing)
{
    Dot11ExtUIPropertyEntry entry = {4, 5, nullptr};
    Dot11ExtUIPropertyEntry* pEntries = &entry;
    const BSTR bstrMark = reinterpret_cast<BSTR>(&entry);
    BSTR bstrModified = bstrMark;
    BOOL bFlag = untouchedBool;
    ULONG uFirst = 78;
    ULONG uSecond = 79;
    TakeLines();
    auto& property = Property();
    EXPECT_EQ(E_NOTIMPL, property.Dot11ExtUIPropertyGetSelected(nullptr, nullptr, &bFlag));
    EXPECT_EQ(E_NOTIMPL, property.Dot11ExtUIPropertyGetSelected(nullptr, nullptr, nullptr));
    EXPECT_EQ(E_NOTIMPL, property.Dot11ExtUIPropertyGetDisplayInfo(0, nullptr, nullptr, &uFirst, &uSecond, &pEntries));
    EXPECT_EQ(E_NOTIMPL, property.Dot11ExtUIPropertyGetDisplayInfo(1, nullptr, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(E_NOTIMPL, property.Dot11ExtUIPropertySetDisplayInfo(0, nullptr, nullptr, &entry, &bstrModified, &bFlag));
    EXPECT_EQ(E_NOTIMPL, property.Dot11ExtUIPropertySetDisplayInfo(0, nullptr, nullptr, nullptr, nullptr, nullptr));
    EXPECT_EQ(E_NOTIMPL, property.Dot11ExtUIPropertyGetFlags(&uFirst, &uSecond));
    EXPECT_EQ(E_NOTIMPL, property.Dot11ExtUIPropertyGetFlags(nullptr, nullptr));
    EXPECT_EQ(untouchedBool, bFlag);
    EXPECT_EQ(78u, uFirst);
    EXPECT_EQ(79u, uSecond);
    EXPECT_EQ(&entry, pEntries);
    EXPECT_EQ(4u, entry.dwDataKey);
    EXPECT_EQ(bstrMark, bstrModified);
    EXPECT_EQ(Lines(), TakeLines());
}

TEST_F(ConnectionProperty, NullOutputsAreRefusedBeforeAnythingElse)
{
    const Lines refused = {"***Error: returning E_INVALIDARG\n"};
    BSTR bstrModified = nullptr;
    BOOL bIsModified = untouchedBool;
    TakeLines();
    EXPECT_EQ(E_INVALIDARG, Property().Dot11ExtUIPropertySetSelected(nullptr, nullptr, nullptr, &bIsModified));
    EXPECT_EQ(refused, TakeLines());
    EXPECT_EQ(E_INVALIDARG, Property().Dot11ExtUIPropertySetSelected(nullptr, nullptr, &bstrModified, nullptr));
    EXPECT_EQ(refused, TakeLines());
    const Lines refusedDialog = {"\nCExtUICon::Dot11ExtUIPropertySetSelected\n", "***Error: returning E_INVALIDARG\n"};
    EXPECT_EQ(E_INVALIDARG, Property().Dot11ExtUIPropertyShowDialog(nullptr, nullptr, nullptr, nullptr, &bIsModified));
    EXPECT_EQ(refusedDialog, TakeLines());
    EXPECT_EQ(E_INVALIDARG, Property().Dot11ExtUIPropertyShowDialog(nullptr, nullptr, nullptr, &bstrModified, nullptr));
    EXPECT_EQ(refusedDialog, TakeLines());
    EXPECT_EQ(untouchedBool, bIsModified);
    EXPECT_EQ(nullptr, bstrModified);
}

TEST_F(ConnectionProperty, AnswersItsOwnInterfaceAndIUnknownOnly)
{
    auto& property = Property();
    for (const IID* pIid : {&IID_IUnknown, &IID_ICCXExtUICon})
    {
        void* pObject = nullptr;
        EXPECT_EQ(S_OK, property.QueryInterface(*pIid, &pObject));
        EXPECT_EQ(&property, pObject);
        EXPECT_EQ(1u, property.Release());
    }
    for (const IID* pIid : {&IID_ICCXExtUIKey, &IID_IDot11ExtUI, &IID_IClassFactory})
    {
        void* pObject = &property;
        EXPECT_EQ(E_NOINTERFACE, property.QueryInterface(*pIid, &pObject));
        EXPECT_EQ(nullptr, pObject);
    }
}

struct SelectCase
{
    const char* name;
    const WCHAR* szProfile;
    const char* szNoticeLine; // null where there is none
    const char* szTree;
};

class ConnectionPropertySelection : public ConnectionProperty, public testing::WithParamInterface<SelectCase>
{
};

TEST_P(ConnectionPropertySelection, AlwaysHandsBackAWholeProfile)
{
    const auto& param = GetParam();
    const CBstr bstrProfile(param.szProfile);
    CBstr bstrModified;
    BOOL bIsModified = FALSE;
    TakeLines();
    EXPECT_EQ(S_OK, Property().Dot11ExtUIPropertySetSelected(bstrProfile.Get(), nullptr, bstrModified.Put(), &bIsModified));
    EXPECT_EQ(TRUE, bIsModified);
    EXPECT_EQ(param.szTree, tests::ProfileTree(bstrModified));
    Lines expected = {"bstrIHVProfile (IN): " + tests::TextOf(bstrProfile) + "\n"};
    if (param.szNoticeLine)
        expected.push_back(param.szNoticeLine);
    expected.push_back("bstrModifiedIHVProfile (OUT): " + tests::TextOf(bstrModified) + "\n");
    EXPECT_EQ(expected, TakeLines());
}

#define MEASURED(off, on)                                                                                                        \
    "<RadioMeasurement><enabled><MaxOffChannelTimeMs>" off "</MaxOffChannelTimeMs><MinOnChannelTimeMs>" on                       \
    "</MinOnChannelTimeMs></enabled></RadioMeasurement>"
#define ROAMING(level) "<AdvancedRoaming><enabled><RoamingOption>" level "</RoamingOption></enabled></AdvancedRoaming>"
#define DIAGNOSED                                                                                                                \
    "<Diagnostics><AuthorizedProfile>true</AuthorizedProfile><Channel><SSID><Name>Diagnostic Channel</Name></SSID>"              \
    "<EnableClientReporting>true</EnableClientReporting></Channel></Diagnostics>"
#define DEFAULTS(level, timer) "<CCX>" MEASURED("50", "400") "<Rapido>true</Rapido>" ROAMING(level) timer DIAGNOSED "</CCX>"
#define LEAST "<CCX><Rapido>false</Rapido><AdvancedRoaming><disabled/></AdvancedRoaming></CCX>"

constexpr const char* szInvalid = "*** Error: invalid profile.\n";
constexpr SelectCase selectCases[] = {
    {"none", nullptr, "--- NULL profile, setting defaults\n", DEFAULTS("0", "")},
    {"empty", OLESTR(""), nullptr, LEAST},
    {"not_xml", OLESTR("<CCX>"), nullptr, LEAST},
    {"root_alone", OLESTR("<CCX/>"), nullptr, "<CCX>" MEASURED("50", "400") "<Rapido>false</Rapido>" ROAMING("0") "</CCX>"},
    {"valid_loses_what_others_wrote",
     OLESTR("<CCX><openNetwork/><!-- x "
            "--><Rapido>true</Rapido><RadioMeasurement><enabled><MaxOffChannelTimeMs>20</MaxOffChannelTimeMs>"
            "<MinOnChannelTimeMs>7</MinOnChannelTimeMs></enabled></RadioMeasurement></CCX>"),
     nullptr, "<CCX>" MEASURED("20", "7") "<Rapido>true</Rapido>" ROAMING("0") "</CCX>"},
    {"time_out_of_range",
     OLESTR(
         "<CCX><RadioMeasurement><enabled><MaxOffChannelTimeMs>60</MaxOffChannelTimeMs><MinOnChannelTimeMs>7</MinOnChannelTimeMs>"
         "</enabled></RadioMeasurement><Rapido>false</Rapido></CCX>"),
     szInvalid, DEFAULTS("0", "")},
    {"timer_and_level_outlive_the_defaults",
     OLESTR("<CCX><KeepAliveTimer/><AdvancedRoaming><enabled><RoamingOption>4</RoamingOption></enabled></AdvancedRoaming></CCX>"),
     szInvalid, DEFAULTS("4", "<KeepAliveTimer><Period>0</Period></KeepAliveTimer>")},
};
INSTANTIATE_TEST_SUITE_P(Profiles, ConnectionPropertySelection, testing::ValuesIn(selectCases), CaseName<SelectCase>);
} // namespace
