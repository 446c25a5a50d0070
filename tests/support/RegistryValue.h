// A registry value for one scope; the value is gone with the object.
#pragma once

#include "values/Unique.h"
#include "values/WideText.h"

#include <gtest/gtest.h>

#include <vector>

namespace tests
{
class CRegistryValue
{
public:
    CRegistryValue(HKEY hRoot, const WCHAR* szKey, const WCHAR* szName, DWORD dwType, const std::vector<BYTE>& bytes)
        : m_szName(szName)
    {
        EXPECT_EQ(LSTATUS{}, RegCreateKeyExW(hRoot, szKey, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr,
                                             m_key.Put(), nullptr));
        EXPECT_EQ(LSTATUS{}, RegSetValueExW(m_key.Get(), szName, 0, dwType, bytes.data(), static_cast<DWORD>(bytes.size())));
    }
    CRegistryValue(HKEY hRoot, const WCHAR* szKey, const WCHAR* szName, DWORD dwNumber)
        : CRegistryValue(hRoot, szKey, szName, REG_DWORD, BytesOf(&dwNumber, sizeof(dwNumber)))
    {
    }
    CRegistryValue(HKEY hRoot, const WCHAR* szKey, const WCHAR* szName, const CWideString& text)
        : CRegistryValue(hRoot, szKey, szName, REG_SZ, BytesOf(text.c_str(), (text.size() + 1) * sizeof(WCHAR)))
    {
    }
    CRegistryValue(CRegistryValue&&) = default;
    ~CRegistryValue()
    {
        if (m_key)
            RegDeleteValueW(m_key.Get(), m_szName);
    }

    static std::vector<BYTE> BytesOf(const void* pData, std::size_t cbData)
    {
        const auto* pBytes = static_cast<const BYTE*>(pData);
        return {pBytes, pBytes + cbData};
    }

private:
    CUniqueKey m_key;
    const WCHAR* m_szName;
};
} // namespace tests
