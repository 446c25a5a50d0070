// The edge of the module. A host that did not ask for exceptions ends when one reaches it, so everything that a host or
// the system calls goes through here; behind it the standard library is used freely.
#pragma once

#include "values/AtlException.h"

// Runs the operation and returns its result; an allocation that failed becomes E_OUTOFMEMORY.
template <class Operation>
HRESULT AtBoundary(const Operation& operation) noexcept
{
    try
    {
        return operation();
    }
    catch (const CAtlException& exception)
    {
        return exception.Result();
    }
    catch (const std::bad_alloc&)
    {
        return E_OUTOFMEMORY;
    }
    catch (...)
    {
        // Nothing here raises anything else; should that change, a host still gets a result.
        return E_UNEXPECTED;
    }
}
