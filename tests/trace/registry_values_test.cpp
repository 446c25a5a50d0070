// Reading single registry values: what the trace log takes its switches from.
#include "tests/support/RegistryValue.h"
#include "tests/support/TestFolder.h"
#include "values/RegistryValues.h"

#include <algorithm>

namespace
{
using tests::CRegistryValue;
using Bytes = std::vector<BYTE>;

constexpr const WCHAR* szKey = OLESTR("Software\\Korvane\\Wavedesk\\Test");
constexpr const WCHAR* szName = OLESTR("Value");
constexpr DWORD dwUntouched = 0xA5A5A5A5;

Bytes Utf16(const WCHAR* szText, std::size_t cchTerminator = 1)
{
    return CRegistryValue::BytesOf(szText, (CWideView(szText).size() + cchTerminator) * sizeof(WCHAR));
}

TEST(RegistryValues, NumberIsWhateverFitsFourBytes)
{
    const struct
    {
        const char* name;
        DWORD dwType;
        Bytes bytes;
        bool bRead;
        DWORD dwValue;
    } rows[] = {
        {"number", REG_DWORD, {7, 0, 0, 0}, true, 7},
        {"negative_number", REG_DWORD, {0xFE, 0xFF, 0xFF, 0xFF}, true, 0xFFFFFFFE},
        {"four_bytes_of_another_type", REG_BINARY, {1, 2, 3, 4}, true, 0x04030201},
        {"text_of_one_character", REG_SZ, Utf16(OLESTR("A")), true, 0x41},
        {"text_of_two_characters", REG_SZ, Utf16(OLESTR("AB")), false, dwUntouched},
        {"one_byte_fills_the_low_byte", REG_BINARY, {5}, true, 0xA5A5A505},
        {"empty_text_fills_the_low_half", REG_SZ, Utf16(OLESTR("")), true, 0xA5A50000},
        {"no_data", REG_BINARY, {}, true, dwUntouched},
        {"five_bytes", REG_BINARY, {1, 2, 3, 4, 5}, false, dwUntouched},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        const CRegistryValue value(HKEY_LOCAL_MACHINE, szKey, szName, row.dwType, row.bytes);
        DWORD dwValue = dwUntouched;
        EXPECT_EQ(row.bRead, RegReadDword(HKEY_LOCAL_MACHINE, szKey, szName, &dwValue));
        EXPECT_EQ(row.dwValue, dwValue);
    }
}

TEST(RegistryValues, TextIsWhateverFitsItsBuffer)
{
    const struct
    {
        const char* name;
        DWORD dwType;
        Bytes bytes;
        bool bRead;
        const char* text;
    } rows[] = {
        {"text", REG_SZ, Utf16(OLESTR("abc")), true, "abc"},
        {"empty_text", REG_SZ, Utf16(OLESTR("")), true, ""},
        {"fills_the_buffer_with_its_terminator", REG_SZ, Utf16(OLESTR("abcdefg")), true, "abcdefg"},
        {"one_character_too_long", REG_SZ, Utf16(OLESTR("abcdefgh")), false, "before"},
        {"stored_without_terminator", REG_SZ, Utf16(OLESTR("abc"), 0), true, "abc"},
        {"text_of_another_type", REG_BINARY, Utf16(OLESTR("abc")), true, "abc"},
        {"number_taken_as_text", REG_DWORD, {0x41, 0, 0, 0}, true, "A"},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        const CRegistryValue value(HKEY_LOCAL_MACHINE, szKey, szName, row.dwType, row.bytes);
        WCHAR szText[8] = {'b', 'e', 'f', 'o', 'r', 'e'};
        EXPECT_EQ(row.bRead, RegReadString(HKEY_LOCAL_MACHINE, szKey, szName, szText, 8));
        EXPECT_EQ(row.text, tests::Narrow(szText));
    }
}

TEST(RegistryValues, TextThatFillsItsBufferIsStillTerminated)
{
    const CRegistryValue value(HKEY_LOCAL_MACHINE, szKey, szName, REG_SZ, Utf16(OLESTR("abcdefgh"), 0));
    WCHAR szText[9] = {'b', 'e', 'f', 'o', 'r', 'e', 0, 0, '!'};
    RegReadString(HKEY_LOCAL_MACHINE, szKey, szName, szText, 8);
    EXPECT_NE(szText + 8, std::find(szText, szText + 8, WCHAR{}));
    EXPECT_EQ(WCHAR{'!'}, szText[8]) << "written beyond the capacity";
}

TEST(RegistryValues, MissingOnesLeaveTheOutputAlone)
{
    const CRegistryValue other(HKEY_LOCAL_MACHINE, szKey, OLESTR("Other"), 1);
    for (const WCHAR* szMissingIn : {szKey, OLESTR("Software\\Korvane\\Wavedesk\\NoSuchKey")})
    {
        DWORD dwValue = dwUntouched;
        WCHAR szText[8] = {'x'};
        EXPECT_FALSE(RegReadDword(HKEY_LOCAL_MACHINE, szMissingIn, szName, &dwValue));
        EXPECT_FALSE(RegReadString(HKEY_LOCAL_MACHINE, szMissingIn, szName, szText, 8));
        EXPECT_EQ(dwUntouched, dwValue);
        EXPECT_EQ(WCHAR{'x'}, szText[0]);
    }
}
} // namespace
