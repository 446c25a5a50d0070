// What registration leaves in the registry, step by step.
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"

#include <optional>
#include <regex>

namespace
{
using tests::CModuleUnderTest;
using tests::CRegistryValue;
using Bytes = std::vector<BYTE>;

#define CLASS_KEY OLESTR("CLSID\\{6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}")
constexpr const WCHAR* szClassKey = CLASS_KEY;
constexpr const WCHAR* szServerKey = CLASS_KEY OLESTR("\\InprocServer32");
constexpr const WCHAR* szForeignKey = CLASS_KEY OLESTR("\\Foreign");

struct Value
{
    DWORD dwType;
    Bytes bytes;
    bool operator==(const Value&) const = default;
};

CUniqueKey Open(const WCHAR* szKey)
{
    CUniqueKey key;
    RegOpenKeyExW(HKEY_CLASSES_ROOT, szKey, 0, KEY_READ, key.Put());
    return key;
}

bool Exists(const WCHAR* szKey)
{
    return static_cast<bool>(Open(szKey));
}

std::optional<Value> Read(const WCHAR* szKey, const WCHAR* szName)
{
    const auto key = Open(szKey);
    Value value = {0, Bytes(1024)};
    auto cbValue = static_cast<DWORD>(value.bytes.size());
    if (!key || RegQueryValueExW(key.Get(), szName, nullptr, &value.dwType, value.bytes.data(), &cbValue) != LSTATUS{})
        return std::nullopt;
    value.bytes.resize(cbValue);
    return value;
}

Value Text(CWideView text)
{
    const CWideString terminated(text);
    return {REG_SZ, CRegistryValue::BytesOf(terminated.c_str(), (terminated.size() + 1) * sizeof(WCHAR))};
}

class Registration : public testing::Test
{
protected:
    Registration()
    {
        RemoveKeys();
    }
    ~Registration() override
    {
        RemoveKeys();
    }
    static void RemoveKeys()
    {
        for (const auto* szKey : {szForeignKey, szServerKey, szClassKey})
            RegDeleteKeyW(HKEY_CLASSES_ROOT, szKey);
    }
    HRESULT Register() const
    {
        return m_module.Export<HRESULT WINAPI()>("DllRegisterServer")();
    }
    HRESULT Unregister() const
    {
        return m_module.Export<HRESULT WINAPI()>("DllUnregisterServer")();
    }
    // The messages since the last call, with one word for the handle in them.
    std::vector<std::string> Lines()
    {
        auto lines = m_log.Take();
        for (auto& line : lines)
            line = std::regex_replace(line, std::regex("hkey = (0x)?[0-9A-Fa-f]+ \n"), "hkey = HANDLE \n");
        return lines;
    }
    static std::vector<std::string> Expected(bool bUnregister)
    {
        return {bUnregister ? "DllUnregisterServer\n" : "DllRegisterServer\n",
                bUnregister ? "SelfRegister( bUnregister = true )\n" : "SelfRegister( bUnregister = false )\n",
                "-- opened key: CLSID, hkey = HANDLE \n", "-- created key: {6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}\n",
                bUnregister ? "-- unregistering...\n" : "-- registering...\n"};
    }
    void ExpectRegistered() const
    {
        WCHAR szPath[MAX_PATH + 1] = {};
        GetModuleFileNameW(m_module.Handle(), szPath, MAX_PATH + 1);
        const auto description = Text(OLESTR("Korvane WLAN IHV Extension UI"));
        EXPECT_EQ(60u, description.bytes.size());
        EXPECT_EQ(description, Read(szClassKey, nullptr));
        EXPECT_EQ(Text(szPath), Read(szServerKey, nullptr));
        EXPECT_EQ(Text(OLESTR("Both")), Read(szServerKey, OLESTR("ThreadingModel")));
    }

    tests::CTraceLog m_log;
    const CModuleUnderTest m_module{CModuleUnderTest::Registration::None};
};

TEST_F(Registration, TwiceWritesTheSameAndUnregisteringRemovesIt)
{
    for (int i = 0; i < 2; ++i)
    {
        EXPECT_EQ(S_OK, Register());
        EXPECT_EQ(Expected(false), Lines());
        ExpectRegistered();
    }
    EXPECT_EQ(S_OK, Unregister());
    EXPECT_EQ(Expected(true), Lines());
    EXPECT_FALSE(Exists(szClassKey));
}

TEST_F(Registration, NeverRegisteredLeavesAnEmptyClassKey)
{
    EXPECT_EQ(S_FALSE, Unregister());
    EXPECT_EQ(Expected(true), Lines());
    EXPECT_TRUE(Exists(szClassKey));
    EXPECT_FALSE(Exists(szServerKey));
    EXPECT_EQ(std::nullopt, Read(szClassKey, nullptr));
}

TEST_F(Registration, ForeignSubKeyKeepsTheClassKey)
{
    EXPECT_EQ(S_OK, Register());
    {
        const CRegistryValue foreign(HKEY_CLASSES_ROOT, szForeignKey, OLESTR("Kept"), 1);
        Lines();
        EXPECT_EQ(S_FALSE, Unregister());
        EXPECT_EQ(Expected(true), Lines());
        EXPECT_FALSE(Exists(szServerKey));
        EXPECT_EQ(Text(OLESTR("Korvane WLAN IHV Extension UI")), Read(szClassKey, nullptr));
        EXPECT_NE(std::nullopt, Read(szForeignKey, OLESTR("Kept")));
    }
    EXPECT_EQ(S_OK, Register()) << "beside a foreign key";
    ExpectRegistered();
}

TEST_F(Registration, OtherValuesAreReplaced)
{
    const CRegistryValue other(HKEY_CLASSES_ROOT, szServerKey, OLESTR("ThreadingModel"), CWideString(OLESTR("Apartment")));
    const CRegistryValue path(HKEY_CLASSES_ROOT, szServerKey, nullptr, 7);
    EXPECT_EQ(S_OK, Register());
    ExpectRegistered();
}
} // namespace
