// What every registry function begins with: the fault plan, the edge for exceptions, the key behind the handle.
#pragma once

#include "platform/advapi32/Hive.h"
#include "platform/testing/FaultPoint.h"

#include <exception>
#include <new>

namespace platform::registry
{
// Runs the body, which throws Failure when it fails.
template <class Body>
LSTATUS RegistryCall(const char* szFunction, Body&& body) noexcept
{
    if (testing::FaultFires(szFunction))
        return static_cast<LSTATUS>(testing::FaultCode(szFunction, ERROR_ACCESS_DENIED));
    try
    {
        body();
        return ERROR_SUCCESS;
    }
    catch (const Failure& failure)
    {
        return static_cast<LSTATUS>(failure.dwError);
    }
    catch (const std::bad_alloc&)
    {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
    catch (const std::exception&)
    {
        return ERROR_REGISTRY_IO_FAILED;
    }
}

// The key that a handle stands for, or one below it.
struct Target
{
    Path path;
    REGSAM samHandle = 0; // what may be done through the handle
    Json* pKey = nullptr;
};

// Throws ERROR_INVALID_HANDLE for what is no open handle, ERROR_KEY_DELETED when its key is gone.
Target FindTarget(const CHive& hive, HKEY hKey);

// Throws ERROR_FILE_NOT_FOUND when there is no such sub-key.
Target FindSubKey(const CHive& hive, Target target, LPCWSTR szSubKey);
} // namespace platform::registry
