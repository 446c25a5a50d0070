// A function in place of an import: asks the plans first and goes on to the platform's own. Made from the function's type
// and its name alone; how a function fails is one of the ways below.
#pragma once

#include "platform/testing/FaultPoint.h"

#include <algorithm>
#include <cstddef>
#include <type_traits>

namespace tests::faults
{
template <std::size_t cchName>
struct CName
{
    consteval CName(const char (&szName)[cchName]) // NOLINT(google-explicit-constructor): a literal is meant to convert
    {
        std::copy_n(szName, cchName, szText);
    }
    char szText[cchName];
};

// The result says no, the last error says why.
template <auto failure, DWORD dwError>
struct SaysNo
{
    template <class Result>
    static Result Fail(const char* szFunction)
    {
        SetLastError(platform::testing::FaultCode(szFunction, dwError));
        if constexpr (std::is_pointer_v<Result> && std::is_integral_v<decltype(failure)>)
            return reinterpret_cast<Result>(failure);
        else
            return static_cast<Result>(failure);
    }
};

// The result is the code.
template <auto code>
struct ReturnsCode
{
    template <class Result>
    static Result Fail(const char* szFunction)
    {
        return static_cast<Result>(platform::testing::FaultCode(szFunction, static_cast<DWORD>(code)));
    }
};

// A planned time-out is an outcome of its own, not an error.
struct FailsToWait
{
    template <class Result>
    static Result Fail(const char* szFunction)
    {
        const DWORD dwCode = platform::testing::FaultCode(szFunction, ERROR_INVALID_HANDLE);
        SetLastError(dwCode);
        return dwCode == WAIT_TIMEOUT ? WAIT_TIMEOUT : WAIT_FAILED;
    }
};

// Gives back what it was given, and then fails the other way.
template <class Way>
struct GivesBack : Way
{
    static constexpr bool bRunsFirst = true;
};

template <class Way>
concept RunsFirst = requires
{
    Way::bRunsFirst;
};

// Calls the platform's own function, or what the way has in place of it.
template <class Way, class Function, class... Arguments>
auto Run(Function pOriginal, Arguments... arguments)
{
    if constexpr (requires { Way::Run(pOriginal, arguments...); })
        return Way::Run(pOriginal, arguments...);
    else
        return pOriginal(arguments...);
}

template <class Way, class Result, class Function, class... Arguments>
Result CallOrFail(const char* szFunction, Function pOriginal, Arguments... arguments)
{
    if (!platform::testing::FaultFires(szFunction))
        return Run<Way>(pOriginal, arguments...);
    if constexpr (RunsFirst<Way>)
        Run<Way>(pOriginal, arguments...);
    return Way::template Fail<Result>(szFunction);
}

template <CName name, class Way, class Function>
struct CImportThunk;

template <CName name, class Way, class Result, class... Arguments>
struct CImportThunk<name, Way, Result(WINAPI*)(Arguments...)>
{
    static inline Result(WINAPI* pOriginal)(Arguments...) = nullptr;

    static Result WINAPI Call(Arguments... arguments)
    {
        return CallOrFail<Way, Result>(name.szText, pOriginal, arguments...);
    }
};

// A row of the table of imports that can be made to fail.
struct FaultableImport
{
    const char* szName;
    void* pThunk;
    void** ppOriginal; // where the thunk finds the platform's own function

    template <CName name, class Way, class Function>
    static FaultableImport Of()
    {
        using Thunk = CImportThunk<name, Way, Function*>;
        return {name.szText, reinterpret_cast<void*>(&Thunk::Call), reinterpret_cast<void**>(&Thunk::pOriginal)};
    }
};
} // namespace tests::faults
