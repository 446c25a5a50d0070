// Strings from the resource module.
#pragma once

#include "values/WideText.h"

#include "com/ModuleState.h"

// One string, cut to the capacity (in UTF-16 code units, terminator included); "" when it cannot be loaded.
template <std::size_t cchCapacity = 256>
class CResourceText
{
public:
    explicit CResourceText(UINT uId)
    {
        LoadStringW(ModuleState::ResourceModule(), uId, m_szText, static_cast<int>(cchCapacity));
    }

    const WCHAR* Get() const
    {
        return m_szText;
    }

private:
    WCHAR m_szText[cchCapacity] = {};
};
