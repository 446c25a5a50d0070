// The machine's wireless interfaces at the moment the list was made.
#pragma once

#include "values/WideText.h"
#include "wlan/WlanClient.h"

#include <vector>

class CWlanAdapterList : public CWlanClient
{
public:
    // Empty when the service cannot be reached; an interface whose identifier has no text form is left out. Throws
    // std::bad_alloc, with nothing left open.
    CWlanAdapterList();

    LONG GetCount() const;

    // The GUID text (36 characters, lower case, no braces) of an index from 0 on; null from the count on, and below 0.
    // The text is the list's.
    const WCHAR* GetGuidString(LONG lIndex) const;

private:
    std::vector<CWideString> m_guidTexts;
};
