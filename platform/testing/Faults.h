// Failing on purpose: tells chosen platform functions to fail at chosen calls.
//
// Natively every stand-in function asks FaultFires with its own name before it does anything. On Windows the same
// test interface is served by patching import tables. A function that gives something back (closes, frees, unlocks) does
// so even when it is made to fail: kept, it would only show the fault itself. Threads: all functions here may be called from any
// thread; counts are per process.
#pragma once

#include <windows.h>

namespace platform::testing
{
// Lets calls number uFirst to uFirst + uCount - 1 (counted from 1, from now on) of the named function fail, by the
// function's own documented failure value and with dwError as last error or returned code where the function has one.
// dwError 0 leaves the choice of the code to the function. A second plan for the same name replaces the first.
void PlanFault(const char* szFunction, unsigned uFirst, unsigned uCount, DWORD dwError = 0);

// Forgets every plan and every count.
void ClearFaults();

// How often the named function was called, and how often it was made to fail, since its plan was made.
unsigned CountCalls(const char* szFunction);
unsigned CountFaults(const char* szFunction);

// Whether only calls made by the thread that asks for this count and fail; those of other threads then pass unnoticed.
void LimitFaultsToThisThread(bool bLimit);

// A plan for one scope: fails the uNth call of the function, once.
class CFailNth
{
public:
    CFailNth(const char* szFunction, unsigned uNth, DWORD dwError = 0) : m_szFunction(szFunction)
    {
        PlanFault(szFunction, uNth, 1, dwError);
    }
    ~CFailNth()
    {
        ClearFaults();
    }
    CFailNth(const CFailNth&) = delete;
    CFailNth& operator=(const CFailNth&) = delete;

    bool HasFired() const
    {
        return CountFaults(m_szFunction) != 0;
    }

private:
    const char* m_szFunction;
};
} // namespace platform::testing
