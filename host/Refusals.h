// What is refused, told on standard error.
#pragma once

#include "host/HostError.h"

#include <cstddef>
#include <vector>

// One line without keys.
void TellRefusal(const char* szReason);

// Does the work on each item: what is refused of one is told and stops no other. The result is how many were refused.
template <class Item, class Work>
std::size_t RefusedAmong(const std::vector<Item>& items, Work work)
{
    std::size_t nRefused = 0;
    for (const Item& item : items)
        try
        {
            work(item);
        }
        catch (const COutputClosed&)
        {
            throw;
        }
        catch (const std::runtime_error& error)
        {
            TellRefusal(error.what());
            ++nRefused;
        }
    return nRefused;
}
