#include "com/ModuleState.h"

#include "values/Unique.h"

#include <atomic>

namespace
{
std::atomic<LONG> lObjectCount = 0;
std::atomic<LONG> lLockCount = 0;
HINSTANCE hModuleHandle = nullptr;
CUniqueLibrary languageResources;
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
    return languageResources ? languageResources.Get() : hModuleHandle;
}

void ModuleState::SetModuleHandle(HINSTANCE hModule)
{
    hModuleHandle = hModule;
}

void ModuleState::SetLanguageModule(HMODULE hLanguageModule)
{
    languageResources.Reset(hLanguageModule);
}
