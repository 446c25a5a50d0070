#include "simulator/Adapters.h"

#include "simulator/ServiceError.h"
#include "simulator/ServiceFolder.h"

#include <objbase.h>
#include <rpc.h>

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <limits>
#include <mutex>

namespace simulator
{
namespace
{
using Json = nlohmann::json;

constexpr const char* stateNames[] = {
    // at the index of their value
    "not ready",    "connected",   "ad hoc network formed", "disconnecting",
    "disconnected", "associating", "discovering",           "authenticating",
};

// A list of objects with lists in them.
constexpr int mostLevels = 3;

[[noreturn]] void Refuse(const std::string& reason)
{
    throw CServiceError(ERROR_INVALID_DATA, "adapters.json: " + reason);
}

// Tells what kind of value there is, which is short whatever the value.
void Expect(bool bIsSo, const char* szExpected, const Json& value)
{
    if (!bIsSo)
        Refuse(std::string(szExpected) + " is expected instead of this " + value.type_name());
}

const std::string& TextOf(const Json& value)
{
    Expect(value.is_string(), "a text", value);
    return value.get_ref<const std::string&>();
}

CWideString WideTextOf(const Json& value)
{
    // The parser has refused what is not UTF-8 already.
    return WideOf(TextOf(value));
}

DWORD NumberOf(const Json& value)
{
    Expect(value.is_number_unsigned() && value.get<std::uint64_t>() <= std::numeric_limits<DWORD>::max(),
           "a number from 0 to 4294967295", value);
    return value.get<DWORD>();
}

GUID GuidOf(const Json& value)
{
    CWideString text = WideTextOf(value);
    GUID guid{};
    Expect(text.size() == 36 && UuidFromStringW(reinterpret_cast<RPC_WSTR>(text.data()), &guid) == RPC_S_OK, "a GUID", value);
    return guid;
}

WLAN_INTERFACE_STATE StateOf(const Json& value)
{
    const auto name = std::find(std::begin(stateNames), std::end(stateNames), TextOf(value));
    Expect(name != std::end(stateNames), "the name of a state", value);
    return static_cast<WLAN_INTERFACE_STATE>(std::distance(std::begin(stateNames), name));
}

std::vector<DOT11_PHY_TYPE> PhyTypesOf(const Json& value)
{
    Expect(value.is_array(), "a list of numbers", value);
    std::vector<DOT11_PHY_TYPE> types;
    for (const Json& number : value)
        types.push_back(static_cast<DOT11_PHY_TYPE>(NumberOf(number)));
    return types;
}

std::string BytesOf(const Json& value)
{
    std::string digits = TextOf(value);
    std::erase(digits, ' ');
    const bool bDigits = digits.find_first_not_of("0123456789abcdefABCDEF") == std::string::npos;
    Expect(bDigits && digits.size() % 2 == 0, "a text of pairs of hexadecimal digits", value);
    std::string bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2)
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(std::stoi(digits.substr(i, 2), nullptr, 16))));
    return bytes;
}

struct Field
{
    const char* szName;
    void (*read)(Adapter& adapter, const Json& value);
};
constexpr Field fields[] = {
    {"guid", [](Adapter& adapter, const Json& value) { adapter.guid = GuidOf(value); }},
    {"description", [](Adapter& adapter, const Json& value) { adapter.description = WideTextOf(value); }},
    {"state", [](Adapter& adapter, const Json& value) { adapter.state = StateOf(value); }},
    {"phyTypes", [](Adapter& adapter, const Json& value) { adapter.phyTypes = PhyTypesOf(value); }},
    {"vendor", [](Adapter& adapter, const Json& value) { adapter.vendor = TextOf(value); }},
    {"rapido", [](Adapter& adapter, const Json& value) { adapter.rapido = NumberOf(value); }},
    {"driverError", [](Adapter& adapter, const Json& value) { adapter.driverError = NumberOf(value); }},
    {"vendorReply", [](Adapter& adapter, const Json& value) { adapter.vendorReply = BytesOf(value); }},
    {"rapidoReply", [](Adapter& adapter, const Json& value) { adapter.rapidoReply = BytesOf(value); }},
};

Adapter ReadAdapter(const Json& entry)
{
    if (!entry.is_object() || !entry.contains("guid"))
        Refuse("an adapter is an object with at least a guid");
    Adapter adapter;
    // A key that is not known is a misspelt one: passing over it would show as a driver that does not answer.
    for (const auto& item : entry.items())
    {
        const auto isItem = [&](const Field& field) { return item.key() == field.szName; };
        const auto field = std::find_if(std::begin(fields), std::end(fields), isItem);
        if (field == std::end(fields))
            Refuse("unknown key " + Json(item.key()).dump(-1, ' ', true));
        try
        {
            field->read(adapter, item.value());
        }
        catch (const CServiceError& error)
        {
            throw CServiceError(error.Code(), error.Reason() + " as " + field->szName);
        }
    }
    return adapter;
}

bool IsShallow(int nLevel, Json::parse_event_t, const Json&)
{
    if (nLevel > mostLevels)
        Refuse("nested deeper than a list of adapters is");
    return true;
}

std::vector<Adapter> ParseAdapters(const std::string& text)
{
    const Json list = Json::parse(text, IsShallow, false, true);
    if (!list.is_array())
        Refuse("not a JSON list");
    std::vector<Adapter> adapters;
    for (const Json& entry : list)
        adapters.push_back(ReadAdapter(entry));
    return adapters;
}
} // namespace

AdapterList ReadAdapters(const std::filesystem::path& serviceFolder)
{
    std::string text = CFile(AdaptersFile(serviceFolder), GENERIC_READ, OPEN_EXISTING).ReadAll();
    // Clients ask several times about each adapter of a list that hardly ever changes.
    static std::mutex mutex;
    static std::string lastText;
    static AdapterList lastAdapters;
    const std::lock_guard lock(mutex);
    if (!lastAdapters || text != lastText)
    {
        lastAdapters = std::make_shared<const std::vector<Adapter>>(ParseAdapters(text));
        lastText = std::move(text);
    }
    return lastAdapters;
}

Adapter FindAdapter(const std::filesystem::path& serviceFolder, const GUID& guid)
{
    const AdapterList adapters = ReadAdapters(serviceFolder);
    for (const Adapter& adapter : *adapters)
    {
        if (IsEqualGUID(adapter.guid, guid))
            return adapter;
    }
    throw CServiceError(ERROR_NOT_FOUND, "no such adapter");
}

CWideString GuidText(const GUID& guid)
{
    constexpr std::size_t cchGuid = 36;
    CWideString text(cchGuid, WCHAR{});
    UUID uuid = guid;
    RPC_WSTR szText = nullptr;
    if (UuidToStringW(&uuid, &szText) != RPC_S_OK)
        throw CServiceError(ERROR_NOT_ENOUGH_MEMORY);
    // The runtime hands out unsigned 16-bit units, not its own character type.
    std::transform(szText, szText + cchGuid, text.begin(), [](auto unit) { return static_cast<WCHAR>(unit); });
    RpcStringFreeW(&szText);
    return text;
}
} // namespace simulator
