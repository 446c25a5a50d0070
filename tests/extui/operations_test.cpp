// What the objects' operations say of themselves, refuse and do not offer. Each is called by its place in its interface,
// as hosts that were built elsewhere call it.
#include "extui/SecurityPropertyInfo.h"
#include "platform/testing/Faults.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"

namespace
{
using tests::CModuleUnderTest;
using Lines = std::vector<std::string>;

// Everything that an operation may write to, set to be recognised.
struct Outputs
{
    Dot11ExtUIPropertyEntry entry = {4, 0, nullptr};
    BSTR text = reinterpret_cast<BSTR>(&entry);
    BOOL flag = 77;
    ULONG first = 78;
    ULONG second = 79;
    void* array = &entry;

    // What was written.
    std::string Written()
    {
        std::string written = flag == 77 ? "" : " flag=" + std::to_string(flag);
        if (text != reinterpret_cast<BSTR>(&entry))
        {
            CBstr owner;
            *owner.Put() = text;
            written += " text=" + tests::TextOf(owner);
        }
        written += first == 78 ? "" : " first=" + std::to_string(first);
        written += second == 79 ? "" : " second=" + std::to_string(second);
        return written + (array == &entry ? "" : array ? " array" : " null");
    }
};

template <class... Arguments>
HRESULT Call(IUnknown* pObject, std::size_t uSlot, Arguments... arguments)
{
    using Operation = HRESULT(STDMETHODCALLTYPE*)(void*, Arguments...);
    void** const ppTable = *reinterpret_cast<void***>(pObject);
    return reinterpret_cast<Operation>(ppTable[uSlot])(pObject, arguments...);
}

// The order of the operations behind the three of IUnknown.
enum RootSlot
{
    friendlyName = 3,
    properties,
    reserved,
};
enum PropertySlot
{
    name = 3,
    showDialog,
    getSelected,
    setSelected,
    hasDialog,
    getInfo,
    setInfo,
    flags,
    initialize, // of the security property alone
};

enum Object
{
    root,
    security,
    unbound, // the security property before it was initialised
    connection,
};

struct OperationCase
{
    const char* name;
    Object object;
    HRESULT (*run)(IUnknown* p, Outputs& o);
    HRESULT hr;
    const char* szWritten = "";
    const char* szHeader = nullptr; // the line before the error line; null where no line is written
};

#define CALL(...) [](IUnknown* p, [[maybe_unused]] Outputs& o) -> HRESULT { return Call(p, __VA_ARGS__); }
constexpr void* null = nullptr;
constexpr const char* noHeader = "";
constexpr const char* headerGetSelected = "\nCExtUIKey::Dot11ExtUIPropertyGetSelected\n";
constexpr const char* headerSetSelected = "\nCExtUIKey::Dot11ExtUIPropertySetSelected\n";
constexpr const char* headerGetInfo = "\nCExtUIKey::Dot11ExtUIPropertyGetDisplayInfo\n";
constexpr const char* headerSetInfo = "\nCExtUIKey::Dot11ExtUIPropertySetDisplayInfo\n";
constexpr const char* headerDialog = "\nCExtUICon::Dot11ExtUIPropertySetSelected\n"; // the other operation's name

const OperationCase operationCases[] = {
    {"root_name", root, CALL(friendlyName, &o.text), S_OK, " text=Korvane"},
    {"root_properties_of_kind_1", root, CALL(properties, 1u, &o.first, &o.array), E_NOTIMPL, " first=0 null"},
    {"root_reserved", root, CALL(reserved, &o.first, &o.second), E_NOTIMPL},

    {"name", security, CALL(name, &o.text), S_OK, " text=CCKM"},
    {"name_null", security, CALL(name, null), E_POINTER},
    {"name_unbound_before_null", unbound, CALL(name, null), E_FAIL},
    {"dialog", security, CALL(showDialog, null, null, null, &o.text, &o.flag), E_NOTIMPL},
    {"get_selected_null_before_unbound", unbound, CALL(getSelected, null, null, null), E_INVALIDARG, "", headerGetSelected},
    {"get_selected_unbound", unbound, CALL(getSelected, null, null, &o.flag), E_FAIL, "", headerGetSelected},
    {"set_selected_null_text", security, CALL(setSelected, null, null, null, &o.flag), E_INVALIDARG, "", headerSetSelected},
    {"set_selected_null_flag", unbound, CALL(setSelected, null, null, &o.text, null), E_INVALIDARG, "", headerSetSelected},
    {"set_selected_unbound", unbound, CALL(setSelected, null, null, &o.text, &o.flag), E_FAIL, "", headerSetSelected},
    {"has_dialog", security, CALL(hasDialog, &o.flag), S_OK, " flag=0"},
    {"has_dialog_unbound_before_null", unbound, CALL(hasDialog, null), E_FAIL},
    {"has_dialog_null", security, CALL(hasDialog, null), E_INVALIDARG},
    {"entries_of_index_1_before_unbound", unbound, CALL(getInfo, 1u, null, null, &o.first, &o.second, &o.array), E_NOTIMPL, "",
     headerGetInfo},
    {"entries_unbound", unbound, CALL(getInfo, 0u, null, null, &o.first, &o.second, &o.array), E_FAIL, "", headerGetInfo},
    {"pick_index_1_before_null", security, CALL(setInfo, 1u, null, null, null, null, null), E_NOTIMPL, "", headerSetInfo},
    {"pick_null_entry", security, CALL(setInfo, 0u, null, null, null, &o.text, &o.flag), E_INVALIDARG, "", headerSetInfo},
    {"pick_null_text", security, CALL(setInfo, 0u, null, null, &o.entry, null, &o.flag), E_INVALIDARG, "", headerSetInfo},
    {"pick_null_flag_before_unbound", unbound, CALL(setInfo, 0u, null, null, &o.entry, &o.text, null), E_INVALIDARG, "",
     headerSetInfo},
    {"pick_unbound", unbound, CALL(setInfo, 0u, null, null, &o.entry, &o.text, &o.flag), E_FAIL, "", headerSetInfo},
    {"flags", security, CALL(flags, &o.first, &o.second), S_OK, " first=0 second=2"},
    {"flags_unbound_before_null", unbound, CALL(flags, null, null), E_FAIL},
    {"flags_null_first", security, CALL(flags, null, &o.second), E_INVALIDARG},
    {"flags_null_second", security, CALL(flags, &o.first, null), E_INVALIDARG},
    {"bind_to_null", unbound, CALL(initialize, null), E_INVALIDARG},

    {"connection_name", connection, CALL(name, &o.text), S_OK, " text=Korvane Connection Settings"},
    {"connection_name_null", connection, CALL(name, null), E_POINTER},
    {"connection_dialog_null_text", connection, CALL(showDialog, null, null, null, null, &o.flag), E_INVALIDARG, "",
     headerDialog},
    {"connection_dialog_null_flag", connection, CALL(showDialog, null, null, null, &o.text, null), E_INVALIDARG, "",
     headerDialog},
    {"connection_get_selected", connection, CALL(getSelected, null, null, &o.flag), E_NOTIMPL},
    {"connection_set_selected_null_text", connection, CALL(setSelected, null, null, null, &o.flag), E_INVALIDARG, "", noHeader},
    {"connection_set_selected_null_flag", connection, CALL(setSelected, null, null, &o.text, null), E_INVALIDARG, "", noHeader},
    {"connection_has_dialog", connection, CALL(hasDialog, &o.flag), S_OK, " flag=1"},
    {"connection_has_dialog_null", connection, CALL(hasDialog, null), E_INVALIDARG},
    {"connection_entries", connection, CALL(getInfo, 0u, null, null, &o.first, &o.second, &o.array), E_NOTIMPL},
    {"connection_pick", connection, CALL(setInfo, 0u, null, null, &o.entry, &o.text, &o.flag), E_NOTIMPL},
    {"connection_flags", connection, CALL(flags, &o.first, &o.second), E_NOTIMPL},
};

std::string CodeName(HRESULT hr)
{
    return hr == E_INVALIDARG ? "E_INVALIDARG" : hr == E_FAIL ? "E_FAIL" : "E_NOTIMPL";
}

// Nothing is handed out for any other success.
TEST(Operations, PropertiesComeWithTheirOneSuccessAlone)
{
    const CModuleUnderTest module;
    const auto rootObject = module.Create<IDot11ExtUI>(IID_IDot11ExtUI);
    for (const ULONG uKind : {propertyKindConnection, propertyKindSecurity})
    {
        Outputs out;
        const platform::testing::CFailNth fault("CoCreateInstance", 1, S_FALSE);
        EXPECT_EQ(S_FALSE, Call(rootObject.Get(), properties, uKind, &out.first, &out.array));
        EXPECT_EQ(" first=0 null", out.Written());
    }
}

TEST(Operations, ByTheirPlace)
{
    tests::CTraceLog log;
    const CModuleUnderTest module;
    const auto rootObject = module.Create<IDot11ExtUI>(IID_IDot11ExtUI);
    const auto securityProperty = module.Property(propertyKindSecurity);
    const auto unboundProperty = module.Create<ICCXExtUIKey>(IID_ICCXExtUIKey);
    const auto connectionProperty = module.Property(propertyKindConnection);
    IUnknown* const objects[] = {rootObject.Get(), securityProperty.Get(), unboundProperty.Get(), connectionProperty.Get()};
    log.Take();
    for (const auto& row : operationCases)
    {
        SCOPED_TRACE(row.name);
        Outputs out;
        EXPECT_EQ(row.hr, row.run(objects[row.object], out));
        EXPECT_EQ(row.szWritten, out.Written());
        EXPECT_EQ(4u, out.entry.dwDataKey);
        Lines expected;
        if (row.szHeader && row.szHeader != noHeader)
            expected.push_back(row.szHeader);
        if (row.szHeader)
            expected.push_back("***Error: returning " + CodeName(row.hr) + "\n");
        EXPECT_EQ(expected, log.Take());
    }
    Outputs out;
    EXPECT_EQ(S_OK, Call(unboundProperty.Get(), initialize, &SecurityPropertyInfos()[0]));
    EXPECT_EQ(S_OK, Call(unboundProperty.Get(), name, &out.text));
    EXPECT_EQ(" text=CCKM", out.Written());
}
} // namespace
