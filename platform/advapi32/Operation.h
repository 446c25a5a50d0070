// What every registry function begins with: the fault plan, the edge for exceptions, the key behind the handle.
#pragma once

#include "platform/advapi32/HiveSession.h"
#include "platform/advapi32/KeyHandles.h"
#include "platform/testing/FaultPoint.h"

#include <exception>
#include <new>

namespace platform::registry
{
template <class Body>
LSTATUS Operate(const char* szFunction, Body&& body) noexcept
{
    if (testing::FaultFires(szFunction))
        return static_cast<LSTATUS>(testing::FaultCode(szFunction, ERROR_ACCESS_DENIED));
    try
    {
        return body();
    }
    catch (const HiveFailure& failure)
    {
        return failure.lStatus;
    }
    catch (const std::bad_alloc&)
    {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
    catch (const std::exception&) // the root folder cannot be made
    {
        return ERROR_REGISTRY_IO_FAILED;
    }
}

// The key that a handle stands for, within a session.
struct Target
{
    Place place;
    Path path;
    REGSAM samHandle = 0; // what may be done through the handle
};

// ERROR_INVALID_HANDLE for what is no open handle, ERROR_KEY_DELETED when its key is gone.
LSTATUS FindTarget(HKEY hKey, CHiveSession& session, Target& target);

// Goes on to a sub-key: ERROR_FILE_NOT_FOUND when it is missing, ERROR_BAD_PATHNAME for a path that begins with a
// separator, ERROR_INVALID_PARAMETER for a name that is longer than any key's.
LSTATUS FindSubKey(LPCWSTR szSubKey, Target& target);
} // namespace platform::registry
