// What every exported function has in common: it is counted, may be told to fail, is written to the call log, and lets
// no exception out.
#pragma once

#include "simulator/CallLog.h"
#include "simulator/ServiceError.h"
#include "simulator/files/File.h"

#include <windows.h>

#include <new>
#include <optional>

namespace simulator
{
// Counts the call. The planned code when the call is to fail.
std::optional<DWORD> EnterCall(const char* szFunction) noexcept;

// act does the work and throws CServiceError when the function is to fail; it may add to the line what came out.
template <class Act>
DWORD RunCall(CCallLine& line, Act act) noexcept
{
    try
    {
        act(line);
        return ERROR_SUCCESS;
    }
    catch (const CServiceError& error)
    {
        line.Reason(error.Reason());
        return error.Code();
    }
    catch (const CFileError& error)
    {
        line.Reason(std::string("a file ") + error.what());
        return error.Code();
    }
    catch (const std::bad_alloc&)
    {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
    catch (...)
    {
        return ERROR_GEN_FAILURE;
    }
}

// describe adds the arguments to the line.
template <class Describe, class Act>
DWORD ServiceCall(const char* szFunction, Describe describe, Act act) noexcept
{
    const auto planned = EnterCall(szFunction);
    CCallLine line(szFunction);
    describe(line);
    if (planned)
        line.Reason("planned");
    const DWORD dwResult = planned ? *planned : RunCall(line, act);
    line.Write(dwResult);
    return dwResult;
}
} // namespace simulator
