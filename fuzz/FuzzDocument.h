// Documents for the fuzz targets that meet them.
#pragma once

#include "fuzz/FuzzText.h"

#include "profile/XmlDocument.h"

#include <objbase.h>

// Takes COM up for the process, once.
inline void PrepareProcess()
{
    static const HRESULT hr = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    Require(SUCCEEDED(hr), "COM starts");
}

inline bool IsWellFormed(const WCHAR* szText)
{
    CXmlDocument document;
    return document.Load(szText) && document.Root();
}
