#include "fuzz/FuzzText.h"

#include "profile/XmlDocument.h"

#include <objbase.h>

void PrepareProcess()
{
    static const HRESULT hr = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    Require(SUCCEEDED(hr), "COM starts");
}

CWideString TextFrom(const std::uint8_t* pData, std::size_t cbData)
{
    const auto* pText = reinterpret_cast<const char*>(pData);
    const int cbText = static_cast<int>(cbData);
    const int cchText = MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, pText, cbText, nullptr, 0);
    CWideString text;
    if (cchText > 0)
    {
        text.resize(static_cast<std::size_t>(cchText));
        MultiByteToWideChar(CP_UTF8, MB_ERR_INVALID_CHARS, pText, cbText, text.data(), cchText);
    }
    else
    {
        for (std::size_t i = 0; i + 1 < cbData; i += 2)
            text += static_cast<WCHAR>(pData[i] | pData[i + 1] << 8);
    }
    return text.substr(0, text.find(WCHAR{}));
}

bool IsWellFormed(const WCHAR* szText)
{
    CXmlDocument document;
    return document.Load(szText) && document.Root();
}
