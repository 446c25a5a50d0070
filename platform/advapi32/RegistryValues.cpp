// Reading, setting and deleting values.
#include "platform/advapi32/Operation.h"
#include "platform/advapi32/ValueText.h"

#include <algorithm>
#include <cstring>

using namespace platform::registry;

namespace
{
// The value of a null name is the key's default value.
std::u16string NameOf(LPCWSTR szValueName)
{
    return szValueName ? szValueName : u"";
}

const Value* FindValue(const Target& target, LPCWSTR szValueName)
{
    const auto& values = target.place.pKey->values;
    const auto found = values.find(FoldName(NameOf(szValueName)));
    return found == values.end() ? nullptr : &found->second;
}

bool IsText(DWORD dwType)
{
    constexpr DWORD dwExpandableText = 2;
    constexpr DWORD dwTexts = 7;
    return dwType == REG_SZ || dwType == dwExpandableText || dwType == dwTexts;
}

bool IsUnterminated(const std::vector<BYTE>& text)
{
    return text.size() >= sizeof(WCHAR) && (text[text.size() - 2] != 0 || text[text.size() - 1] != 0);
}

// The size is that of the bytes that were set. A text that was set without terminator gets one behind them where the
// caller has room for it, and is handed out without one where he has not.
LSTATUS CopyData(const Value& value, LPDWORD pdwType, LPBYTE pbData, LPDWORD pcbData)
{
    const auto cbNeeded = static_cast<DWORD>(value.data.size());
    if (pdwType)
        *pdwType = value.dwType;
    if (!pcbData)
        return ERROR_SUCCESS;
    const DWORD cbRoom = *pcbData;
    *pcbData = cbNeeded;
    if (!pbData)
        return ERROR_SUCCESS;
    if (cbRoom < cbNeeded)
        return ERROR_MORE_DATA;
    BYTE* const pEnd = std::ranges::copy(value.data, pbData).out;
    if (IsText(value.dwType) && IsUnterminated(value.data) && cbRoom - cbNeeded >= sizeof(WCHAR))
        std::fill_n(pEnd, sizeof(WCHAR), BYTE{0});
    return ERROR_SUCCESS;
}
} // namespace

LSTATUS WINAPI RegQueryValueExW(HKEY hKey, LPCWSTR szValueName, LPDWORD pdwReserved, LPDWORD pdwType, LPBYTE pbData,
                                LPDWORD pcbData)
{
    return Operate("RegQueryValueExW",
                   [&]() -> LSTATUS
                   {
                       if (pdwReserved || (pbData && !pcbData))
                           return ERROR_INVALID_PARAMETER;
                       CHiveSession session(CHiveSession::Mode::Read);
                       Target target;
                       if (const LSTATUS lStatus = FindTarget(hKey, session, target))
                           return lStatus;
                       if (!(target.samHandle & KEY_QUERY_VALUE))
                           return ERROR_ACCESS_DENIED;
                       const Value* const pValue = FindValue(target, szValueName);
                       return pValue ? CopyData(*pValue, pdwType, pbData, pcbData) : static_cast<LSTATUS>(ERROR_FILE_NOT_FOUND);
                   });
}

LSTATUS WINAPI RegSetValueExW(HKEY hKey, LPCWSTR szValueName, DWORD dwReserved, DWORD dwType, const BYTE* pbData, DWORD cbData)
{
    return Operate("RegSetValueExW",
                   [&]() -> LSTATUS
                   {
                       std::u16string name = NameOf(szValueName);
                       if (dwReserved != 0 || (!pbData && cbData != 0) || !IsStorableName(name, maxValueNameLength))
                           return ERROR_INVALID_PARAMETER;
                       CHiveSession session(CHiveSession::Mode::Write);
                       Target target;
                       if (const LSTATUS lStatus = FindTarget(hKey, session, target))
                           return lStatus;
                       if (!(target.samHandle & KEY_SET_VALUE))
                           return ERROR_ACCESS_DENIED;
                       std::vector<BYTE> data(pbData, pbData + cbData);
                       const auto [slot, bNew] = target.place.pKey->values.try_emplace(FoldName(name));
                       if (bNew)
                           slot->second.name = std::move(name);
                       slot->second.dwType = dwType;
                       slot->second.data = std::move(data);
                       session.Save();
                       return ERROR_SUCCESS;
                   });
}

LSTATUS WINAPI RegDeleteValueW(HKEY hKey, LPCWSTR szValueName)
{
    return Operate("RegDeleteValueW",
                   [&]() -> LSTATUS
                   {
                       CHiveSession session(CHiveSession::Mode::Write);
                       Target target;
                       if (const LSTATUS lStatus = FindTarget(hKey, session, target))
                           return lStatus;
                       if (!(target.samHandle & KEY_SET_VALUE))
                           return ERROR_ACCESS_DENIED;
                       if (target.place.pKey->values.erase(FoldName(NameOf(szValueName))) == 0)
                           return ERROR_FILE_NOT_FOUND;
                       session.Save();
                       return ERROR_SUCCESS;
                   });
}

namespace platform::registry
{
std::optional<std::u16string> ReadText(HKEY hKey, LPCWSTR szSubKey, LPCWSTR szValueName)
{
    try
    {
        CHiveSession session(CHiveSession::Mode::Read);
        Target target;
        if (FindTarget(hKey, session, target) || FindSubKey(szSubKey, target) || !(target.place.samGranted & KEY_QUERY_VALUE))
            return std::nullopt;
        const Value* const pValue = FindValue(target, szValueName);
        if (!pValue || pValue->dwType != REG_SZ)
            return std::nullopt;
        std::u16string text(pValue->data.size() / sizeof(WCHAR), u'\0');
        std::memcpy(text.data(), pValue->data.data(), text.size() * sizeof(WCHAR));
        return text.substr(0, text.find(u'\0'));
    }
    catch (const HiveFailure&)
    {
        return std::nullopt;
    }
}
} // namespace platform::registry
