// The registration as cases see it: the module with its log, and the keys in the registry, gone before and after.
#pragma once

#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"

#include <optional>
#include <regex>

namespace tests::registration
{
inline constexpr const WCHAR* szClassKey = OLESTR("CLSID\\{6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}");
inline constexpr const WCHAR* szServerKey = OLESTR("CLSID\\{6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}\\InprocServer32");
inline constexpr const WCHAR* szForeignKey = OLESTR("CLSID\\{6C0E5D21-3B7A-4F19-9D42-7E1A8C3F5B60}\\Foreign");

struct Value
{
    DWORD dwType;
    std::vector<BYTE> bytes;
    bool operator==(const Value&) const = default;
};

inline CUniqueKey Open(const WCHAR* szKey)
{
    CUniqueKey key;
    RegOpenKeyExW(HKEY_CLASSES_ROOT, szKey, 0, KEY_READ, key.Put());
    return key;
}

inline bool Exists(const WCHAR* szKey)
{
    return static_cast<bool>(Open(szKey));
}

inline std::optional<Value> Read(const WCHAR* szKey, const WCHAR* szName)
{
    const auto key = Open(szKey);
    Value value = {0, std::vector<BYTE>(1024)};
    auto cbValue = static_cast<DWORD>(value.bytes.size());
    if (!key || RegQueryValueExW(key.Get(), szName, nullptr, &value.dwType, value.bytes.data(), &cbValue) != LSTATUS{})
        return std::nullopt;
    value.bytes.resize(cbValue);
    return value;
}

inline Value Text(CWideView text)
{
    const CWideString terminated(text);
    return {REG_SZ, CRegistryValue::BytesOf(terminated.c_str(), (terminated.size() + 1) * sizeof(WCHAR))};
}

class RegistrationTest : public testing::Test
{
protected:
    RegistrationTest()
    {
        RemoveKeys();
    }
    ~RegistrationTest() override
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

    CTraceLog m_log;
    const CModuleUnderTest m_module{CModuleUnderTest::Registration::None};
};
} // namespace tests::registration
