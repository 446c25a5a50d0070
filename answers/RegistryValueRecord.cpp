#include "answers/AnswersKey.h"
#include "answers/Wording.h"

namespace answers
{
namespace
{
constexpr BYTE filler = 0xEE;

struct ValueCase
{
    const char* szName;
    DWORD dwType;
    std::string_view bytes; // all but the text's own terminator
};

using namespace std::string_view_literals;
constexpr ValueCase valueCases[] = {
    {"text", REG_SZ, "a\0b\0\0\0"sv},
    {"text without terminator", REG_SZ, "a\0b\0"sv},
    {"text of one character without terminator", REG_SZ, "a\0"sv},
    {"text with two terminators", REG_SZ, "a\0\0\0\0\0"sv},
    {"text with a terminator inside", REG_SZ, "a\0\0\0b\0\0\0"sv},
    {"text with a terminator inside and none at its end", REG_SZ, "a\0\0\0b\0"sv},
    {"text of a terminator", REG_SZ, "\0\0"sv},
    {"text of no bytes", REG_SZ, ""sv},
    {"text of one byte", REG_SZ, "a"sv},
    {"text of three bytes", REG_SZ, "a\0b"sv},
    {"text with half a surrogate pair", REG_SZ, "\x00\xD8\0\0"sv},
    {"expandable text", 2, "%\0A\0%\0\0\0"sv},
    {"expandable text without terminator", 2, "%\0A\0%\0"sv},
    {"bytes", REG_BINARY, "\x01\x02\x03"sv},
    {"no bytes", REG_BINARY, ""sv},
    {"number", REG_DWORD, "\x01\0\0\x80"sv},
    {"number of no bytes", REG_DWORD, ""sv},
    {"number of three bytes", REG_DWORD, "\x01\x02\x03"sv},
    {"number of five bytes", REG_DWORD, "\x01\x02\x03\x04\x05"sv},
    {"number from its high end", 5, "\x01\x02\x03\x04"sv},
    {"link", 6, "a\0"sv},
    {"texts", 7, "a\0\0\0b\0\0\0\0\0"sv},
    {"texts without end", 7, "a\0\0\0b\0"sv},
    {"wide number", 11, "\x01\x02\x03\x04\x05\x06\x07\x08"sv},
    {"no type", 0, "\x01\x02"sv},
    {"no type and no bytes", 0, ""sv},
    {"unknown type", 1234, "\x01\x02"sv},
    {"highest type", 0xFFFFFFFF, "\x01\x02"sv},
};

void RecordQueries(CRecord& record, HKEY hKey, const ValueCase& value)
{
    const std::string name = value.szName;
    DWORD dwType = 77;
    DWORD cbData = 77;
    LSTATUS lStatus = RegQueryValueExW(hKey, OLESTR("v"), nullptr, &dwType, nullptr, &cbData);
    record.Add(name + ": type and size",
               ShownStatus(lStatus) + ", type " + std::to_string(dwType) + ", size " + std::to_string(cbData));
    record.Add(name + ": existence", ShownStatus(RegQueryValueExW(hKey, OLESTR("v"), nullptr, nullptr, nullptr, nullptr)));
    const DWORD cbStored = cbData;
    const DWORD cbFirst = cbStored < 3 ? 0 : cbStored - 3;
    for (DWORD cbRoom = cbFirst; cbRoom <= cbStored + 4; ++cbRoom)
    {
        std::string buffer(cbStored + 8, static_cast<char>(filler));
        cbData = cbRoom;
        dwType = 77;
        lStatus = RegQueryValueExW(hKey, OLESTR("v"), nullptr, &dwType, reinterpret_cast<BYTE*>(buffer.data()), &cbData);
        std::string answer = ShownStatus(lStatus) + ", type " + std::to_string(dwType) + ", size " + std::to_string(cbData);
        if (lStatus == 0)
            answer += ", buffer " + ShownBytes(buffer);
        record.Add(name + ": room for " + std::to_string(cbRoom) + " of " + std::to_string(cbStored), answer);
    }
}

void RecordValues(CRecord& record)
{
    for (const auto& value : valueCases)
    {
        const CAnswersKey base;
        // What follows the bytes of a text is looked at by some platforms; it is no terminator.
        const std::string bytes = std::string(value.bytes).append(4, 'z');
        const LSTATUS status =
            SetBytes(base.Get(), OLESTR("v"), value.dwType, std::string_view(bytes).substr(0, value.bytes.size()));
        record.Add(std::string("set ") + value.szName, ShownStatus(status));
        RecordQueries(record, base.Get(), value);
    }
}

void RecordValueArguments(CRecord& record)
{
    const CAnswersKey base;
    const HKEY hKey = base.Get();
    SetBytes(hKey, OLESTR("v"), REG_BINARY, "12345");
    BYTE buffer[16];
    DWORD cb = sizeof(buffer);
    DWORD dwReserved = 0;
    DWORD dwType = 0;
    record.Add("query with something reserved",
               ShownStatus(RegQueryValueExW(hKey, OLESTR("v"), &dwReserved, &dwType, buffer, &cb)));
    record.Add("query into a buffer of unknown size",
               ShownStatus(RegQueryValueExW(hKey, OLESTR("v"), nullptr, &dwType, buffer, nullptr)));
    cb = 0;
    const LSTATUS sizeStatus = RegQueryValueExW(hKey, OLESTR("v"), nullptr, nullptr, nullptr, &cb);
    record.Add("query the size with room for none", ShownStatus(sizeStatus) + ", size " + std::to_string(cb));
    cb = 3;
    const LSTATUS lStatus = RegQueryValueExW(hKey, OLESTR("none"), nullptr, &dwType, buffer, &cb);
    record.Add("query a missing value", ShownStatus(lStatus));
    record.Add("set nothing", ShownStatus(RegSetValueExW(hKey, OLESTR("n"), 0, REG_BINARY, nullptr, 0)));
    record.Add("set a text of nothing", ShownStatus(RegSetValueExW(hKey, OLESTR("n"), 0, REG_SZ, nullptr, 0)));
    for (const std::size_t cchName : {255u, 256u, 16382u, 16383u, 16384u, 20000u})
    {
        const CWideString name(cchName, OLESTR('n'));
        const std::string length = " a value with a name of " + std::to_string(cchName);
        record.Add("query" + length, ShownStatus(RegQueryValueExW(hKey, name.c_str(), nullptr, nullptr, nullptr, nullptr)));
        record.Add("set" + length, ShownStatus(SetBytes(hKey, name.c_str(), REG_BINARY, "x")));
        record.Add("delete" + length, ShownStatus(RegDeleteValueW(hKey, name.c_str())));
    }
    for (const std::size_t cbLarge : {2048u, 65536u, 1048576u})
    {
        const std::string large(cbLarge, 'x');
        const LSTATUS lSet = SetBytes(hKey, OLESTR("large"), REG_BINARY, large);
        cb = 0;
        RegQueryValueExW(hKey, OLESTR("large"), nullptr, nullptr, nullptr, &cb);
        record.Add("set " + std::to_string(cbLarge) + " bytes", ShownStatus(lSet) + ", size " + std::to_string(cb));
    }
}

void RecordValueNames(CRecord& record)
{
    static constexpr struct
    {
        const WCHAR* szSet;
        const WCHAR* szQueried;
    } names[] = {
        {nullptr, OLESTR("")},
        {OLESTR(""), nullptr},
        {OLESTR("Name"), OLESTR("Name")},
        {OLESTR("Name"), OLESTR("NAME")},
        {OLESTR("Name"), OLESTR("Name ")},
        {OLESTR("Name"), OLESTR(" Name")},
        {OLESTR("a\\b"), OLESTR("a\\b")},
        {OLESTR("a\\b"), OLESTR("A\\B")},
        {OLESTR("\\"), OLESTR("\\")},
        {OLESTR("a\\b"), OLESTR("a/b")},
        {OLESTR("\u00E4\u00F6"), OLESTR("\u00C4\u00D6")},
        {OLESTR("\u044F"), OLESTR("\u042F")},
        {OLESTR("\u03C9"), OLESTR("\u03A9")},
        {OLESTR("\u00DF"), OLESTR("ss")},
        {OLESTR("\u00DF"), OLESTR("\u1E9E")},
        {OLESTR("\u0131"), OLESTR("I")},
        {OLESTR("\u017F"), OLESTR("S")},
        {OLESTR("\u00FF"), OLESTR("\u0178")},
        {OLESTR("\uFF41"), OLESTR("\uFF21")},
        {OLESTR("\u4E2D"), OLESTR("\u4E2D")},
        {OLESTR("@"), OLESTR("")},
        {OLESTR("Default"), nullptr},
        {OLESTR("\x01"), OLESTR("\x01")},
    };
    for (const auto& name : names)
    {
        const CAnswersKey base;
        const std::string pair = Quoted(name.szSet) + " as " + Quoted(name.szQueried);
        record.Add("set " + pair, ShownStatus(SetBytes(base.Get(), name.szSet, REG_BINARY, "x")));
        record.Add("query " + pair,
                   ShownStatus(RegQueryValueExW(base.Get(), name.szQueried, nullptr, nullptr, nullptr, nullptr)));
        record.Add("set again " + pair, ShownStatus(SetBytes(base.Get(), name.szQueried, REG_BINARY, "yz")));
        DWORD cb = 0;
        RegQueryValueExW(base.Get(), name.szSet, nullptr, nullptr, nullptr, &cb);
        record.Add("size of " + pair, std::to_string(cb));
        record.Add("delete " + pair, ShownStatus(RegDeleteValueW(base.Get(), name.szQueried)));
        record.Add("delete again " + pair, ShownStatus(RegDeleteValueW(base.Get(), name.szQueried)));
    }
    const CAnswersKey base;
    record.Add("query a default value that was never set",
               ShownStatus(RegQueryValueExW(base.Get(), nullptr, nullptr, nullptr, nullptr, nullptr)));
    record.Add("delete a default value that was never set", ShownStatus(RegDeleteValueW(base.Get(), nullptr)));
}
} // namespace

void RecordRegistryValues(CRecord& record)
{
    RecordValues(record);
    RecordValueArguments(record);
    RecordValueNames(record);
}
} // namespace answers
