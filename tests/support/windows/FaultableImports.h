// Every import that can be made to fail, and the patching of import tables with their thunks.
#pragma once

#include "tests/support/windows/ImportThunk.h"

#include <vector>

namespace tests::faults
{
const std::vector<FaultableImport>& FaultableImports();

// The module's allocations; in the test program there is no telling whose they are.
const std::vector<FaultableImport>& AllocationImports();

// Lets the loaded module's imports of these functions go through their thunks. May be repeated.
void PatchImports(HMODULE hModule, const std::vector<FaultableImport>& imports);

// Writes a pointer into memory that is protected against it.
void Overwrite(void** ppSlot, void* pValue);
} // namespace tests::faults
