// Reading, setting and deleting values.
#include "platform/advapi32/RegistryCall.h"
#include "platform/advapi32/ValueText.h"
#include "platform/kernel32/Unicode.h"

#include <algorithm>
#include <cstring>

namespace platform::registry
{
namespace
{
struct Value
{
    DWORD dwType;
    std::vector<BYTE> data;
};

// The value of a null name is the key's default value.
std::u16string_view NameOf(LPCWSTR szValueName)
{
    return szValueName ? szValueName : u"";
}

std::vector<BYTE> BytesOf(const void* pData, std::size_t cbData)
{
    const auto* pBytes = static_cast<const BYTE*>(pData);
    return {pBytes, pBytes + cbData};
}

std::u16string TextOf(const Value& value)
{
    std::u16string text(value.data.size() / sizeof(WCHAR), u'\0');
    if (!text.empty())
        std::memcpy(text.data(), value.data.data(), text.size() * sizeof(WCHAR));
    return text;
}

Value ValueOf(const Json& json)
{
    if (json.is_string())
    {
        const std::u16string text = FromUtf8(json.get_ref<const std::string&>());
        return {REG_SZ, BytesOf(text.c_str(), (text.size() + 1) * sizeof(WCHAR))};
    }
    if (json.is_number())
    {
        const auto dwNumber = json.get<DWORD>();
        return {REG_DWORD, BytesOf(&dwNumber, sizeof(dwNumber))};
    }
    return {json["type"], json["bytes"]};
}

// A text or a number only when it says the same as the bytes.
Json JsonOf(Value value)
{
    if (value.dwType == REG_SZ)
    {
        Json text = ToUtf8(TextOf(value).substr(0, value.data.size() / sizeof(WCHAR) - 1));
        if (ValueOf(text).data == value.data)
            return text;
    }
    DWORD dwNumber = 0;
    if (value.dwType == REG_DWORD && value.data.size() == sizeof(dwNumber))
    {
        std::memcpy(&dwNumber, value.data.data(), sizeof(dwNumber));
        return dwNumber;
    }
    return {{"type", value.dwType}, {"bytes", std::move(value.data)}};
}
} // namespace

std::optional<std::u16string> ReadText(HKEY hKey, LPCWSTR szSubKey, LPCWSTR szValueName)
{
    try
    {
        const CHive hive(CHive::Mode::Read);
        const Target target = FindSubKey(hive, FindTarget(hive, hKey), szSubKey);
        const Json* const pValue = FindMember(*target.pKey, "values", NameOf(szValueName));
        if (!pValue || !pValue->is_string())
            return std::nullopt;
        return FromUtf8(pValue->get_ref<const std::string&>());
    }
    catch (const Failure&)
    {
        return std::nullopt;
    }
}
} // namespace platform::registry

using namespace platform::registry;
using platform::Require;

LSTATUS WINAPI RegQueryValueExW(HKEY hKey, LPCWSTR szValueName, LPDWORD pdwReserved, LPDWORD pdwType, LPBYTE pbData,
                                LPDWORD pcbData)
{
    return RegistryCall("RegQueryValueExW",
                        [&]
                        {
                            Require(!pdwReserved && (!pbData || pcbData), ERROR_INVALID_PARAMETER);
                            const CHive hive(CHive::Mode::Read);
                            const Target target = FindTarget(hive, hKey);
                            Require((target.samHandle & KEY_QUERY_VALUE) != 0, ERROR_ACCESS_DENIED);
                            const Json* const pValue = FindMember(*target.pKey, "values", NameOf(szValueName));
                            Require(pValue, ERROR_FILE_NOT_FOUND);
                            const Value value = ValueOf(*pValue);
                            if (pdwType)
                                *pdwType = value.dwType;
                            if (!pcbData)
                                return;
                            const std::size_t cbRoom = *pcbData;
                            *pcbData = static_cast<DWORD>(value.data.size());
                            if (!pbData)
                                return;
                            Require(value.data.size() <= cbRoom, ERROR_MORE_DATA);
                            std::ranges::copy(value.data, pbData);
                        });
}

LSTATUS WINAPI RegSetValueExW(HKEY hKey, LPCWSTR szValueName, DWORD dwReserved, DWORD dwType, const BYTE* pbData, DWORD cbData)
{
    return RegistryCall("RegSetValueExW",
                        [&]
                        {
                            Require(dwReserved == 0 && (pbData || cbData == 0), ERROR_INVALID_PARAMETER);
                            CHive hive(CHive::Mode::Write);
                            const Target target = FindTarget(hive, hKey);
                            Require((target.samHandle & KEY_SET_VALUE) != 0, ERROR_ACCESS_DENIED);
                            Json* pValue = FindMember(*target.pKey, "values", NameOf(szValueName));
                            if (!pValue)
                                pValue = &(*target.pKey)["values"][platform::ToUtf8(NameOf(szValueName))];
                            *pValue = JsonOf({dwType, BytesOf(pbData, cbData)});
                            hive.Save();
                        });
}

LSTATUS WINAPI RegDeleteValueW(HKEY hKey, LPCWSTR szValueName)
{
    return RegistryCall("RegDeleteValueW",
                        [&]
                        {
                            CHive hive(CHive::Mode::Write);
                            const Target target = FindTarget(hive, hKey);
                            Require((target.samHandle & KEY_SET_VALUE) != 0, ERROR_ACCESS_DENIED);
                            Require(EraseMember(*target.pKey, "values", NameOf(szValueName)), ERROR_FILE_NOT_FOUND);
                            hive.Save();
                        });
}
