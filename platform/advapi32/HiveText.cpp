#include "platform/advapi32/HiveText.h"

#include "platform/kernel32/Unicode.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace platform::registry
{
namespace
{
using Json = nlohmann::ordered_json;

template <class T>
struct Named
{
    const char* szName;
    T value;
};

constexpr Named<Access> accessNames[] = {
    {"none", Access::None},
    {"read", Access::Read},
    {"full", Access::Full},
};

constexpr Named<DWORD> typeNames[] = {
    {"REG_NONE", 0},          {"REG_SZ", REG_SZ},  {"REG_EXPAND_SZ", 2}, {"REG_BINARY", REG_BINARY},
    {"REG_DWORD", REG_DWORD}, {"REG_MULTI_SZ", 7}, {"REG_QWORD", 11},
};

template <class T, std::size_t n>
const Named<T>* FindNamed(const Named<T> (&table)[n], const std::string& name)
{
    const auto found = std::ranges::find_if(table, [&](const auto& row) { return name == row.szName; });
    return found == std::end(table) ? nullptr : &*found;
}

template <class T, std::size_t n>
const Named<T>* FindNamed(const Named<T> (&table)[n], T value)
{
    const auto found = std::ranges::find_if(table, [&](const auto& row) { return value == row.value; });
    return found == std::end(table) ? nullptr : &*found;
}

template <class Number>
Number TakeNumber(const Json& json)
{
    if (!json.is_number_unsigned() || json.get<std::uint64_t>() > std::numeric_limits<Number>::max())
        throw CMalformedHive("not a 32-bit number: " + json.dump());
    return json.get<Number>();
}

const std::string& TakeText(const Json& json)
{
    if (!json.is_string())
        throw CMalformedHive("not a text: " + json.dump());
    return json.get_ref<const std::string&>();
}

std::vector<BYTE> BytesOf(const void* pData, std::size_t cbData)
{
    const auto* pBytes = static_cast<const BYTE*>(pData);
    return {pBytes, pBytes + cbData};
}

// The text of a REG_SZ that says the same as its bytes; none for an odd size, a missing terminator, lone surrogates.
std::optional<std::string> ReadableText(const Value& value)
{
    const std::size_t cch = value.data.size() / sizeof(WCHAR);
    if (value.dwType != REG_SZ || cch == 0 || value.data.size() % sizeof(WCHAR) != 0)
        return std::nullopt;
    std::u16string text(cch, u'\0');
    std::memcpy(text.data(), value.data.data(), value.data.size());
    if (text.back() != u'\0')
        return std::nullopt;
    text.pop_back();
    std::string readable = ToUtf8(text);
    if (FromUtf8(readable) != text)
        return std::nullopt;
    return readable;
}

constexpr char hexDigits[] = "0123456789ABCDEF";

std::string HexOf(const std::vector<BYTE>& data)
{
    std::string hex;
    hex.reserve(data.size() * 2);
    for (const BYTE byte : data)
    {
        hex += hexDigits[byte >> 4];
        hex += hexDigits[byte & 0xF];
    }
    return hex;
}

std::vector<BYTE> BytesOfHex(const std::string& hex)
{
    const auto digit = [&](char c)
    {
        const char upper = c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c;
        const char* const pDigit = std::find(hexDigits, hexDigits + 16, upper);
        if (pDigit == hexDigits + 16)
            throw CMalformedHive("not hexadecimal: " + hex);
        return static_cast<unsigned>(pDigit - hexDigits);
    };
    if (hex.size() % 2 != 0)
        throw CMalformedHive("half a byte: " + hex);
    std::vector<BYTE> data;
    data.reserve(hex.size() / 2);
    for (std::size_t i = 0; i < hex.size(); i += 2)
        data.push_back(static_cast<BYTE>(digit(hex[i]) << 4 | digit(hex[i + 1])));
    return data;
}

DWORD TakeType(const Json& json)
{
    if (json.is_number())
        return TakeNumber<DWORD>(json);
    const auto* const pType = FindNamed(typeNames, TakeText(json));
    if (!pType)
        throw CMalformedHive("unknown type: " + json.dump());
    return pType->value;
}

Value TakeValue(const std::string& name, const Json& json)
{
    Value value{FromUtf8(name), REG_SZ, {}};
    if (json.is_string())
    {
        const std::u16string text = FromUtf8(TakeText(json));
        value.data = BytesOf(text.c_str(), (text.size() + 1) * sizeof(WCHAR));
        return value;
    }
    if (json.is_number())
    {
        const auto dwNumber = TakeNumber<DWORD>(json);
        value.dwType = REG_DWORD;
        value.data = BytesOf(&dwNumber, sizeof dwNumber);
        return value;
    }
    if (!json.is_object() || json.size() != 2 || !json.contains("type") || !json.contains("hex"))
        throw CMalformedHive("not a value: " + json.dump());
    value.dwType = TakeType(json["type"]);
    value.data = BytesOfHex(TakeText(json["hex"]));
    return value;
}

Json ValueJson(const Value& value)
{
    if (auto text = ReadableText(value))
        return std::move(*text);
    if (value.dwType == REG_DWORD && value.data.size() == sizeof(DWORD))
    {
        DWORD dwNumber;
        std::memcpy(&dwNumber, value.data.data(), sizeof dwNumber);
        return dwNumber;
    }
    Json json;
    if (const auto* const pType = FindNamed(typeNames, value.dwType))
        json["type"] = pType->szName;
    else
        json["type"] = value.dwType;
    json["hex"] = HexOf(value.data);
    return json;
}

void TakeAccess(const Json& json, Key& key)
{
    const auto* const pAccess = FindNamed(accessNames, TakeText(json));
    if (!pAccess)
        throw CMalformedHive("unknown access: " + json.dump());
    key.access = pAccess->value;
}

void TakeValues(const Json& json, Key& key)
{
    for (const auto& [name, part] : json.items())
    {
        if (!key.values.emplace(FoldName(FromUtf8(name)), TakeValue(name, part)).second)
            throw CMalformedHive("twice the same value: " + name);
    }
}

void TakeKey(const Json& json, Key& key, std::size_t depth);

void TakeKeys(const Json& json, Key& key, std::size_t depth)
{
    for (const auto& [name, part] : json.items())
    {
        const std::size_t cKeys = key.keys.size();
        Key& subKey = EnsureKey(key, FromUtf8(name));
        if (key.keys.size() == cKeys)
            throw CMalformedHive("twice the same key: " + name);
        TakeKey(part, subKey, depth + 1);
    }
}

void TakeKey(const Json& json, Key& key, std::size_t depth)
{
    if (!json.is_object() || depth > maxDepth)
        throw CMalformedHive("not a key: " + ToUtf8(key.name));
    for (const auto& [member, content] : json.items())
    {
        if (member == "access")
            TakeAccess(content, key);
        else if (member == "values" && content.is_object())
            TakeValues(content, key);
        else if (member == "keys" && content.is_object())
            TakeKeys(content, key, depth);
        else
            throw CMalformedHive("not a part of a key: " + member);
    }
}

Json KeyJson(const Key& key)
{
    Json json = Json::object();
    if (key.access)
        json["access"] = FindNamed(accessNames, *key.access)->szName;
    for (const auto& [folded, value] : key.values)
        json["values"][ToUtf8(value.name)] = ValueJson(value);
    for (const auto& [folded, pKey] : key.keys)
        json["keys"][ToUtf8(pKey->name)] = KeyJson(*pKey);
    return json;
}

// The places that the predefined handles stand for exist whatever a person took out of the file.
Key& EnsurePredefined(Key& root)
{
    EnsureKey(root, u"HKEY_CURRENT_USER");
    return EnsureKey(EnsureKey(EnsureKey(root, u"HKEY_LOCAL_MACHINE"), u"Software"), u"Classes");
}
} // namespace

std::unique_ptr<Key> ParseHive(const std::string& text)
{
    auto root = std::make_unique<Key>();
    try
    {
        const Json json = Json::parse(text);
        if (!json.is_object())
            throw CMalformedHive("not an object of root keys");
        TakeKeys(json, *root, 0);
    }
    catch (const Json::exception& failure)
    {
        throw CMalformedHive(failure.what());
    }
    EnsurePredefined(*root);
    return root;
}

std::string WriteHive(const Key& root)
{
    Json json = Json::object();
    for (const auto& [folded, pKey] : root.keys)
        json[ToUtf8(pKey->name)] = KeyJson(*pKey);
    return json.dump(2) + '\n';
}

std::unique_ptr<Key> DefaultHive()
{
    auto root = std::make_unique<Key>();
    EnsureKey(EnsureKey(*root, u"HKEY_CURRENT_USER"), u"Software");
    EnsureKey(EnsurePredefined(*root), u"CLSID");
    return root;
}
} // namespace platform::registry
