// What the product relies on from the registry. Everything happens below one key of this process under the user's
// software key, which is deleted afterwards.
#include <windows.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace
{
using Text = std::basic_string<WCHAR>;
using Bytes = std::vector<BYTE>;

class CKey
{
public:
    CKey() = default;
    ~CKey()
    {
        if (m_hKey)
            RegCloseKey(m_hKey);
    }
    CKey(const CKey&) = delete;
    CKey& operator=(const CKey&) = delete;

    LSTATUS Open(HKEY hParent, const WCHAR* szSubKey, REGSAM samDesired = KEY_ALL_ACCESS)
    {
        return RegOpenKeyExW(hParent, szSubKey, 0, samDesired, &m_hKey);
    }
    LSTATUS Create(HKEY hParent, const WCHAR* szSubKey, DWORD* pdwDisposition = nullptr, REGSAM samDesired = KEY_ALL_ACCESS)
    {
        return RegCreateKeyExW(hParent, szSubKey, 0, nullptr, REG_OPTION_NON_VOLATILE, samDesired, nullptr, &m_hKey,
                               pdwDisposition);
    }
    LSTATUS Close()
    {
        return RegCloseKey(std::exchange(m_hKey, nullptr));
    }
    operator HKEY() const
    {
        return m_hKey;
    }

private:
    HKEY m_hKey = nullptr;
};

LSTATUS SetNumber(HKEY hKey, const WCHAR* szName, DWORD dwValue)
{
    return RegSetValueExW(hKey, szName, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&dwValue), sizeof dwValue);
}

LSTATUS Query(HKEY hKey, const WCHAR* szName)
{
    return RegQueryValueExW(hKey, szName, nullptr, nullptr, nullptr, nullptr);
}

std::vector<Text> SubKeys(HKEY hKey)
{
    std::vector<Text> names;
    WCHAR szName[256];
    for (DWORD cch = 256;
         RegEnumKeyExW(hKey, static_cast<DWORD>(names.size()), szName, &cch, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         cch = 256)
        names.emplace_back(szName, cch);
    return names;
}

void DeleteTree(HKEY hParent, const Text& name)
{
    {
        CKey key;
        if (key.Open(hParent, name.c_str()) != ERROR_SUCCESS)
            return;
        for (const Text& subKey : SubKeys(key))
            DeleteTree(key, subKey);
    }
    EXPECT_EQ(RegDeleteKeyW(hParent, name.c_str()), LSTATUS{ERROR_SUCCESS});
}

class CRegistryWorld
{
public:
    CRegistryWorld()
    {
        m_path = OLESTR("Software\\korihvui-test-");
        for (const char digit : std::to_string(GetCurrentProcessId()))
            m_path += static_cast<WCHAR>(digit);
        EXPECT_EQ(m_key.Create(HKEY_CURRENT_USER, m_path.c_str()), LSTATUS{ERROR_SUCCESS});
    }
    ~CRegistryWorld()
    {
        DeleteTree(HKEY_CURRENT_USER, m_path);
    }
    CRegistryWorld(const CRegistryWorld&) = delete;
    CRegistryWorld& operator=(const CRegistryWorld&) = delete;

    HKEY Key() const
    {
        return m_key;
    }

private:
    Text m_path;
    CKey m_key;
};

// The last code of a few steps below the test's key, whose earlier steps all succeed.
struct ResultCase
{
    const char* szName;
    LSTATUS expected;
    LSTATUS (*pRun)(HKEY hTest);
};

void PrintTo(const ResultCase& row, std::ostream* pStream)
{
    *pStream << row.szName;
}

const ResultCase resultCases[] = {
    {"missing_key_is_not_opened", ERROR_FILE_NOT_FOUND, [](HKEY hTest) { return CKey().Open(hTest, OLESTR("none")); }},
    {"missing_parent_is_not_opened", ERROR_FILE_NOT_FOUND, [](HKEY hTest) { return CKey().Open(hTest, OLESTR("none\\below")); }},
    {"empty_sub_key_opens_the_key_again", ERROR_SUCCESS, [](HKEY hTest) { return CKey().Open(hTest, OLESTR("")); }},
    {"null_sub_key_opens_the_key_again", ERROR_SUCCESS, [](HKEY hTest) { return CKey().Open(hTest, nullptr); }},
    {"key_names_ignore_case", ERROR_SUCCESS,
     [](HKEY hTest)
     {
         CKey key;
         EXPECT_EQ(key.Create(hTest, OLESTR("Outer\\Inner")), LSTATUS{ERROR_SUCCESS});
         return CKey().Open(hTest, OLESTR("OUTER\\inner"), KEY_READ);
     }},
    {"value_names_ignore_case", ERROR_SUCCESS,
     [](HKEY hTest)
     {
         EXPECT_EQ(SetNumber(hTest, OLESTR("EnableTraceLog"), 1), LSTATUS{ERROR_SUCCESS});
         return Query(hTest, OLESTR("enabletracelog"));
     }},
    {"missing_value_is_not_found", ERROR_FILE_NOT_FOUND, [](HKEY hTest) { return Query(hTest, OLESTR("none")); }},
    {"default_value_is_missing_at_first", ERROR_FILE_NOT_FOUND, [](HKEY hTest) { return Query(hTest, nullptr); }},
    {"null_and_empty_name_are_the_default_value", ERROR_SUCCESS,
     [](HKEY hTest)
     {
         EXPECT_EQ(SetNumber(hTest, OLESTR(""), 1), LSTATUS{ERROR_SUCCESS});
         return Query(hTest, nullptr);
     }},
    {"deleted_value_is_missing", ERROR_FILE_NOT_FOUND,
     [](HKEY hTest)
     {
         EXPECT_EQ(SetNumber(hTest, OLESTR("gone"), 1), LSTATUS{ERROR_SUCCESS});
         EXPECT_EQ(RegDeleteValueW(hTest, OLESTR("GONE")), LSTATUS{ERROR_SUCCESS});
         return RegDeleteValueW(hTest, OLESTR("gone"));
     }},
    {"reader_may_not_set", ERROR_ACCESS_DENIED,
     [](HKEY hTest)
     {
         CKey key;
         EXPECT_EQ(key.Open(hTest, nullptr, KEY_READ), LSTATUS{ERROR_SUCCESS});
         return SetNumber(key, OLESTR("value"), 1);
     }},
    {"writer_may_not_query", ERROR_ACCESS_DENIED,
     [](HKEY hTest)
     {
         CKey key;
         EXPECT_EQ(key.Open(hTest, nullptr, KEY_SET_VALUE), LSTATUS{ERROR_SUCCESS});
         return Query(key, nullptr);
     }},
    {"key_with_sub_keys_is_not_deleted", ERROR_ACCESS_DENIED,
     [](HKEY hTest)
     {
         CKey key;
         EXPECT_EQ(key.Create(hTest, OLESTR("class\\other")), LSTATUS{ERROR_SUCCESS});
         return RegDeleteKeyW(hTest, OLESTR("class"));
     }},
    {"missing_key_is_not_deleted", ERROR_FILE_NOT_FOUND, [](HKEY hTest) { return RegDeleteKeyW(hTest, OLESTR("none")); }},
    {"open_key_is_deleted", ERROR_FILE_NOT_FOUND,
     [](HKEY hTest)
     {
         CKey key;
         EXPECT_EQ(key.Create(hTest, OLESTR("class")), LSTATUS{ERROR_SUCCESS});
         EXPECT_EQ(RegDeleteKeyW(hTest, OLESTR("Class")), LSTATUS{ERROR_SUCCESS});
         return CKey().Open(hTest, OLESTR("class"));
     }},
    {"handle_of_a_deleted_key_is_told_so", ERROR_KEY_DELETED,
     [](HKEY hTest)
     {
         CKey key;
         EXPECT_EQ(key.Create(hTest, OLESTR("class")), LSTATUS{ERROR_SUCCESS});
         EXPECT_EQ(RegDeleteKeyW(hTest, OLESTR("class")), LSTATUS{ERROR_SUCCESS});
         return SetNumber(key, OLESTR("value"), 1);
     }},
    {"null_handle_is_invalid", ERROR_INVALID_HANDLE, [](HKEY) { return CKey().Open(nullptr, OLESTR("Software")); }},
    {"closing_a_null_handle_is_an_error", ERROR_INVALID_HANDLE, [](HKEY) { return RegCloseKey(nullptr); }},
    {"closed_handle_is_invalid", ERROR_INVALID_HANDLE,
     [](HKEY hTest)
     {
         CKey key;
         EXPECT_EQ(key.Open(hTest, nullptr), LSTATUS{ERROR_SUCCESS});
         const HKEY hClosed = key;
         EXPECT_EQ(key.Close(), LSTATUS{ERROR_SUCCESS});
         return Query(hClosed, nullptr);
     }},
};

class RegistryResult : public testing::TestWithParam<ResultCase>
{
};

TEST_P(RegistryResult, IsAsDocumented)
{
    const CRegistryWorld world;
    EXPECT_EQ(GetParam().pRun(world.Key()), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(Registry, RegistryResult, testing::ValuesIn(resultCases),
                         [](const auto& row) { return std::string(row.param.szName); });

// Values come back byte for byte, whatever their type says about them.
struct ValueCase
{
    const char* szName;
    DWORD dwType;
    Bytes data;
};

void PrintTo(const ValueCase& row, std::ostream* pStream)
{
    *pStream << row.szName;
}

const ValueCase valueCases[] = {
    {"terminated_text", REG_SZ, {'B', 0, 'o', 0, 't', 0, 'h', 0, 0, 0}},
    {"text_beyond_ascii", REG_SZ, {0xE4, 0, 0x3D, 0xD8, 0x00, 0xDE, 0, 0}},
    {"empty_text", REG_SZ, {0, 0}},
    {"text_without_a_byte", REG_SZ, {}},
    {"text_without_terminator", REG_SZ, {'a', 0, 'b', 0}},
    {"text_with_an_odd_byte_count", REG_SZ, {'a', 0, 'b'}},
    {"text_with_a_terminator_inside", REG_SZ, {'a', 0, 0, 0, 'b', 0, 0, 0}},
    {"text_with_a_lone_surrogate", REG_SZ, {0x00, 0xD8, 'a', 0, 0, 0}},
    {"number", REG_DWORD, {0xFF, 0xFF, 0xFF, 0xFF}},
    {"short_number", REG_DWORD, {1, 2}},
    {"binary", REG_BINARY, {0, 1, 0x7F, 0x80, 0xFF}},
    {"binary_that_looks_like_a_number", REG_BINARY, {1, 0, 0, 0}},
    {"unknown_type", 0x1234, {9}},
};

class RegistryValue : public testing::TestWithParam<ValueCase>
{
};

TEST_P(RegistryValue, ComesBackByteForByte)
{
    const CRegistryWorld world;
    const auto& [szName, dwType, data] = GetParam();
    // Behind a text without terminator stand bytes that are no terminator either: the platform looks at them.
    Bytes stored = data;
    stored.insert(stored.end(), {0x55, 0x55, 0x55, 0x55});
    const auto cb = static_cast<DWORD>(data.size());
    ASSERT_EQ(RegSetValueExW(world.Key(), OLESTR("value"), 0, dwType, stored.data(), cb), LSTATUS{ERROR_SUCCESS});

    DWORD dwReadType = 0;
    DWORD cbNeeded = 0;
    ASSERT_EQ(RegQueryValueExW(world.Key(), OLESTR("value"), nullptr, &dwReadType, nullptr, &cbNeeded), LSTATUS{ERROR_SUCCESS});
    EXPECT_EQ(dwReadType, dwType);
    EXPECT_EQ(cbNeeded, cb);

    Bytes read(cb + 2, BYTE{0xAA});
    DWORD cbRead = cb; // the exact room, so that nobody can add a terminator
    ASSERT_EQ(RegQueryValueExW(world.Key(), OLESTR("value"), nullptr, &dwReadType, read.data(), &cbRead), LSTATUS{ERROR_SUCCESS});
    EXPECT_EQ(dwReadType, dwType);
    EXPECT_EQ(cbRead, cb);
    EXPECT_TRUE(std::equal(data.begin(), data.end(), read.begin()));
    EXPECT_EQ(Bytes(read.end() - 2, read.end()), Bytes(2, BYTE{0xAA}));
}

INSTANTIATE_TEST_SUITE_P(Registry, RegistryValue, testing::ValuesIn(valueCases),
                         [](const auto& row) { return std::string(row.param.szName); });

TEST(Registry, ValueLargerThanTheBufferTellsItsSizeAndLeavesTheBufferAlone)
{
    const CRegistryWorld world;
    const BYTE text[] = {'a', 0, 'b', 0, 0, 0};
    ASSERT_EQ(RegSetValueExW(world.Key(), OLESTR("EnableTraceLog"), 0, REG_SZ, text, sizeof text), LSTATUS{ERROR_SUCCESS});
    DWORD dwNumber = 7;
    DWORD cb = sizeof dwNumber;
    EXPECT_EQ(RegQueryValueExW(world.Key(), OLESTR("EnableTraceLog"), nullptr, nullptr, reinterpret_cast<BYTE*>(&dwNumber), &cb),
              LSTATUS{ERROR_MORE_DATA});
    EXPECT_EQ(cb, sizeof text);
    EXPECT_EQ(dwNumber, 7u);
}

TEST(Registry, CreatingTellsNewFromExisting)
{
    const CRegistryWorld world;
    CKey created, opened;
    DWORD dwDisposition = 0;
    ASSERT_EQ(created.Create(world.Key(), OLESTR("a\\b\\c"), &dwDisposition), LSTATUS{ERROR_SUCCESS});
    EXPECT_EQ(dwDisposition, DWORD{REG_CREATED_NEW_KEY});
    ASSERT_EQ(opened.Create(world.Key(), OLESTR("A\\B\\C"), &dwDisposition), LSTATUS{ERROR_SUCCESS});
    EXPECT_EQ(dwDisposition, DWORD{REG_OPENED_EXISTING_KEY});
}

// The platform checks the right to create on the parent key itself, not on what its handle was opened for.
TEST(Registry, CreatingBelowAHandleForReadingIsTheUsersRight)
{
    const CRegistryWorld world;
    CKey reader, created;
    ASSERT_EQ(reader.Open(world.Key(), nullptr, KEY_READ), LSTATUS{ERROR_SUCCESS});
    EXPECT_EQ(created.Create(reader, OLESTR("new")), LSTATUS{ERROR_SUCCESS});
}

TEST(Registry, SubKeysAreListedAsWrittenUntilNoneIsLeft)
{
    const CRegistryWorld world;
    CKey first, second;
    ASSERT_EQ(first.Create(world.Key(), OLESTR("InprocServer32")), LSTATUS{ERROR_SUCCESS});
    ASSERT_EQ(second.Create(world.Key(), OLESTR("Other")), LSTATUS{ERROR_SUCCESS});
    EXPECT_EQ(SubKeys(world.Key()), (std::vector<Text>{OLESTR("InprocServer32"), OLESTR("Other")}));

    WCHAR szName[14];
    DWORD cch = 14; // one short of the name with its terminator
    EXPECT_EQ(RegEnumKeyExW(world.Key(), 0, szName, &cch, nullptr, nullptr, nullptr, nullptr), LSTATUS{ERROR_MORE_DATA});
    cch = 14;
    EXPECT_EQ(RegEnumKeyExW(world.Key(), 2, szName, &cch, nullptr, nullptr, nullptr, nullptr), LSTATUS{ERROR_NO_MORE_ITEMS});
}

TEST(Registry, SettingAgainReplacesTypeAndData)
{
    const CRegistryWorld world;
    const BYTE text[] = {'1', 0, 0, 0};
    ASSERT_EQ(SetNumber(world.Key(), OLESTR("NoCCX"), 1), LSTATUS{ERROR_SUCCESS});
    ASSERT_EQ(RegSetValueExW(world.Key(), OLESTR("noccx"), 0, REG_SZ, text, sizeof text), LSTATUS{ERROR_SUCCESS});
    DWORD dwType = 0;
    ASSERT_EQ(RegQueryValueExW(world.Key(), OLESTR("NoCCX"), nullptr, &dwType, nullptr, nullptr), LSTATUS{ERROR_SUCCESS});
    EXPECT_EQ(dwType, DWORD{REG_SZ});
}

TEST(Registry, ClassesRootIsTheMachinesSoftwareClasses)
{
    CKey direct, through;
    EXPECT_EQ(direct.Open(HKEY_CLASSES_ROOT, OLESTR("CLSID"), KEY_READ), LSTATUS{ERROR_SUCCESS});
    EXPECT_EQ(through.Open(HKEY_LOCAL_MACHINE, OLESTR("SOFTWARE\\Classes\\CLSID"), KEY_READ), LSTATUS{ERROR_SUCCESS});
}
} // namespace
