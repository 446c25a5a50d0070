// What calls a function through a pointer, that of an import table or of an object's methods, is made to ask the plans of
// faults first.
#pragma once

#include "tests/support/PlatformFunctions.h"

namespace tests::faults
{
// From now on calls through the slot are calls of the function as the plans know it. Those that do not fail go to the target,
// by default to what the slot held.
void Divert(void** ppSlot, const PlatformFunction& function, void* pTarget = nullptr);

// CoCreateInstance, after which the operations of the documents that it makes ask the plans too; the creation of a document
// fails under a name of its own as well.
HRESULT WINAPI CreateWatched(REFCLSID rclsid, IUnknown* pOuter, DWORD dwContext, REFIID riid, void** ppv);
} // namespace tests::faults
