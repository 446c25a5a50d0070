// The public operations of the module, each with ordinary arguments, and what becomes of them when the platform fails.
#pragma once

#include "tests/module/WalkWorld.h"

#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace tests::walk
{
// What an operation may write to, set to be recognised.
struct Outputs
{
    static constexpr int nUntouched = 77;

    CBstr untouched{OLESTR("untouched")};
    BSTR bstrProfile = untouched.Get();
    BOOL bFlag = nUntouched;
    std::string others;

    // The outcome: the result, followed by everything that was written.
    std::string After(HRESULT hr) const;
};

struct Operation
{
    const char* szName;
    // Prepares what it needs, runs the operation by the world's Call, and puts everything back.
    HRESULT (*run)(CWorld& world, Outputs& outputs);
    // The outcomes with a failing call of the functions, both as regular expressions; the first row that names a function
    // counts for it. A failure of any other function changes nothing. The walk adds " traced CODE" for an error line.
    struct Failure
    {
        const char* szFunctions;
        const char* szOutcomes;
    };
    std::vector<Failure> failures = {};
    bool bLoads = false; // loads and unloads the module itself

    std::string Outcome(CWorld& world) const
    {
        Outputs outputs;
        const HRESULT hr = run(world, outputs);
        return outputs.After(hr);
    }
    // Puts the module where the operation needs it.
    void Prepare(CWorld& world) const
    {
        if (bLoads)
            world.Unload();
        else if (!world.IsLoaded())
            world.Load();
    }
};

// The outcome of running out of memory, for a row's table.
#define OUT_OF_MEMORY "E_OUTOFMEMORY traced E_OUTOFMEMORY"

inline void PrintTo(const Operation& operation, std::ostream* pStream)
{
    *pStream << operation.szName;
}

std::span<const Operation> ModuleOperations();
std::span<const Operation> PropertyOperations();
// Which take their time.
std::span<const Operation> DialogOperations();

std::vector<Operation> AllOperations();

// Known by their names.
inline bool IsDialog(const Operation& operation)
{
    return std::string_view(operation.szName).find("dialog") != std::string_view::npos;
}
// A dialog, a load or a change of the registry takes a hundred times as long as anything else.
inline bool IsSlow(const Operation& operation)
{
    return operation.bLoads || IsDialog(operation) || std::string_view(operation.szName).ends_with("egisterServer");
}
} // namespace tests::walk
