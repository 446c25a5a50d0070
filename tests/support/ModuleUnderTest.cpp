#include "tests/support/ModuleUnderTest.h"

#include "tests/support/Pattern.h"

namespace tests
{
std::filesystem::path BuildFolder()
{
    return std::filesystem::path(BesideProgram({})).parent_path();
}

CModuleUnderTest::CModuleUnderTest(Registration registration)
{
    m_hModule = LoadLibraryW(BesideProgram(OLESTR("korihvui.dll")).c_str());
    EXPECT_NE(nullptr, m_hModule);
    if (m_hModule && registration == Registration::Registered)
        m_bRegistered = Export<HRESULT WINAPI()>("DllRegisterServer")() == S_OK;
}

CModuleUnderTest::~CModuleUnderTest()
{
    Unload();
}

void CModuleUnderTest::Unload()
{
    if (!m_hModule)
        return;
    if (m_bRegistered)
    {
        EXPECT_EQ(S_OK, Export<HRESULT WINAPI()>("DllUnregisterServer")());
    }
    EXPECT_EQ(S_OK, CanUnloadNow());
    FreeLibrary(m_hModule);
    m_hModule = nullptr;
}

CComRef<IDot11ExtUIProperty> CModuleUnderTest::Property(ULONG uKind) const
{
    const auto root = Create<IDot11ExtUI>(IID_IDot11ExtUI);
    ULONG cProperties = 0;
    IDot11ExtUIProperty** ppProperties = nullptr;
    CComRef<IDot11ExtUIProperty> property;
    EXPECT_EQ(S_OK, root->Dot11ExtUIGetProperties(uKind, &cProperties, &ppProperties));
    EXPECT_EQ(1u, cProperties);
    if (ppProperties)
        *property.Put() = ppProperties[0];
    CoTaskMemFree(ppProperties);
    return property;
}

CConnectionContext::CConnectionContext(CWideView name, const GUID& interfaceGuid, DWORD dwFlags, DWORD dwKind)
{
    const auto put = [&](std::size_t cbOffset, const void* pField, std::size_t cbField)
    { std::memcpy(m_bytes.data() + cbOffset, pField, cbField); };
    put(ConnectionContextOffset::connectionKind, &dwKind, sizeof(dwKind));
    put(ConnectionContextOffset::profileName, name.data(), name.size() * sizeof(WCHAR));
    put(ConnectionContextOffset::profileFlags, &dwFlags, sizeof(dwFlags));
    put(ConnectionContextOffset::interfaceGuid, &interfaceGuid, sizeof(interfaceGuid));
}

std::string TextOf(const CBstr& bstr)
{
    return bstr ? Narrow(bstr.View()) : "(null)";
}

std::string ProfileTree(const CBstr& bstrProfile)
{
    std::string text = Replaced(TextOf(bstrProfile), R"( xmlns="[^"]*")", "");
    text = Replaced(text, R"(>\s+<)", "><");
    text = Replaced(text, R"(\s+$)", "");
    return Replaced(text, R"(<(\w+)></\1>)", "<$1/>");
}
} // namespace tests
