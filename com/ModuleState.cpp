#include "com/ModuleState.h"

#include "values/Unique.h"

#include <atomic>
#include <utility>

namespace
{
std::atomic<LONG> lObjectCount = 0;
std::atomic<LONG> lLockCount = 0;
HINSTANCE hModuleHandle = nullptr;
// Ours to release, before the log is closed: an owner among the statics would do it after that.
HMODULE hLanguageResources = nullptr;
} // namespace

LONG ModuleState::IncrementObjectCount()
{
    return ++lObjectCount;
}

LONG ModuleState::DecrementObjectCount()
{
    return --lObjectCount;
}

LONG ModuleState::IncrementLockCount()
{
    return ++lLockCount;
}

LONG ModuleState::DecrementLockCount()
{
    return --lLockCount;
}

bool ModuleState::IsUnused()
{
    return lObjectCount == 0 && lLockCount == 0;
}

HINSTANCE ModuleState::ModuleHandle()
{
    return hModuleHandle;
}

HMODULE ModuleState::ResourceModule()
{
    return hLanguageResources ? hLanguageResources : hModuleHandle;
}

void ModuleState::SetModuleHandle(HINSTANCE hModule)
{
    hModuleHandle = hModule;
}

void ModuleState::SetLanguageModule(HMODULE hLanguageModule)
{
    hLanguageResources = hLanguageModule;
}

void ModuleState::ReleaseLanguageModule()
{
    const CUniqueLibrary released(std::exchange(hLanguageResources, nullptr));
}
