// What the whole module shares: how much of it is in use, and its handles.
#pragma once

#include <windows.h>

namespace ModuleState
{
// Live root and property objects. Class factories are not counted. Any thread.
LONG IncrementObjectCount();
LONG DecrementObjectCount();

// Locks that hosts hold through LockServer. Any thread.
LONG IncrementLockCount();
LONG DecrementLockCount();

// Whether neither objects nor locks are left.
bool IsUnused();

// The module itself, and where strings and the dialog are loaded from: a language resource file or the module. Written
// while the module is loaded and unloaded, which the system serialises.
HINSTANCE ModuleHandle();
HMODULE ResourceModule();

void SetModuleHandle(HINSTANCE hModule);

// Takes over a language resource file to load from, until the module is unloaded; null for the module itself.
void SetLanguageModule(HMODULE hLanguageModule);
} // namespace ModuleState
