// Owner of memory that the WLAN service handed out.
#pragma once

#include <windows.h>

#include <wlanapi.h>

#include "values/Unique.h"

template <class Record>
struct CWlanMemoryCloser
{
    using Handle = Record*;
    static Record* Empty()
    {
        return nullptr;
    }
    static void Close(Record* pRecord)
    {
        WlanFreeMemory(pRecord);
    }
};
template <class Record>
using CUniqueWlanMemory = CUnique<CWlanMemoryCloser<Record>>;
