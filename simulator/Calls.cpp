#include "simulator/Calls.h"

#include "simulator/Clients.h"
#include "simulator/SimulatedWlan.h"

#include <algorithm>
#include <iterator>
#include <mutex>
#include <string_view>

namespace
{
struct FunctionState
{
    const char* szName;
    bool bHasResult;
    unsigned uCalls;
    // The plan, in calls counted from the moment it was made.
    unsigned uCallsBefore;
    unsigned uFirst;
    unsigned uCount;
    DWORD dwError;
};

constexpr FunctionState Function(const char* szName, bool bHasResult = true)
{
    return {szName, bHasResult, 0, 0, 0, 0, 0};
}

std::mutex tableMutex;

FunctionState functionTable[] = {
    Function("WlanOpenHandle"), Function("WlanCloseHandle"),       Function("WlanEnumInterfaces"),
    Function("WlanGetProfile"), Function("WlanSetProfile"),        Function("WlanGetInterfaceCapability"),
    Function("WlanIhvControl"), Function("WlanFreeMemory", false), Function("WlanGetProfileList"),
};

FunctionState* FindFunction(const char* szFunction)
{
    const auto found =
        std::find_if(std::begin(functionTable), std::end(functionTable),
                     [&](const FunctionState& state) { return szFunction && std::string_view(szFunction) == state.szName; });
    return found == std::end(functionTable) ? nullptr : found;
}
} // namespace

namespace simulator
{
std::optional<DWORD> EnterCall(const char* szFunction) noexcept
{
    const std::lock_guard lock(tableMutex);
    FunctionState& state = *FindFunction(szFunction);
    ++state.uCalls;
    const unsigned uCall = state.uCalls - state.uCallsBefore;
    if (uCall < state.uFirst || uCall - state.uFirst >= state.uCount)
        return std::nullopt;
    return state.dwError;
}
} // namespace simulator

LONG WINAPI SimulatedWlanLiveHandles()
{
    return simulator::LiveClients();
}

LONG WINAPI SimulatedWlanLiveBlocks()
{
    return simulator::LiveBlocks();
}

BOOL WINAPI SimulatedWlanFailNext(const char* szFunction, unsigned uFirst, unsigned uCount, DWORD dwError)
{
    const std::lock_guard lock(tableMutex);
    FunctionState* pState = FindFunction(szFunction);
    if (!pState || !pState->bHasResult)
        return FALSE;
    pState->uCallsBefore = pState->uCalls;
    pState->uFirst = uFirst;
    pState->uCount = uCount;
    pState->dwError = dwError;
    return TRUE;
}

void WINAPI SimulatedWlanClearFaults()
{
    const std::lock_guard lock(tableMutex);
    for (FunctionState& state : functionTable)
        state = Function(state.szName, state.bHasResult);
}

unsigned WINAPI SimulatedWlanCalls(const char* szFunction)
{
    const std::lock_guard lock(tableMutex);
    const FunctionState* pState = FindFunction(szFunction);
    return pState ? pState->uCalls : 0;
}
