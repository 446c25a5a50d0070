// The public operations of the module, each with ordinary arguments, and what becomes of them when the platform fails.
#pragma once

#include "tests/module/Fault.h"
#include "tests/module/WalkWorld.h"

#include <cstdio>
#include <ostream>
#include <span>
#include <string>
#include <string_view>

namespace tests::walk
{
struct Operation
{
    std::string_view name;
    enum class Kind
    {
        Plain,
        Loads,  // loads and unloads the module itself
        Dialog, // takes its time
        LoadsDialog,
    };
    Kind kind;
    // Prepares what it needs, runs the operation, armed with the fault when there is one, and puts everything back.
    // The outcome is the result followed by every output.
    std::string (*run)(CWorld& world, CFault* pFault);
    // The outcomes with a failing call of the functions, both as regular expressions; the first row that names a function
    // counts for it. A failure of any other function changes nothing. The walk adds " traced CODE" for an error line.
    struct Failure
    {
        const char* szFunctions;
        const char* szOutcomes;
    };
    std::vector<Failure> failures = {};

    bool Loads() const
    {
        return kind == Kind::Loads || kind == Kind::LoadsDialog;
    }
    bool IsDialog() const
    {
        return kind == Kind::Dialog || kind == Kind::LoadsDialog;
    }
};

// The outcome of running out of memory, for a row's table.
#define OUT_OF_MEMORY(outputs) "E_OUTOFMEMORY " outputs " traced E_OUTOFMEMORY"

inline void PrintTo(const Operation& operation, std::ostream* pStream)
{
    *pStream << operation.name;
}

std::span<const Operation> ModuleOperations();
std::span<const Operation> PropertyOperations();
std::span<const Operation> DialogOperations();

inline std::vector<Operation> AllOperations()
{
    std::vector<Operation> all;
    for (const auto operations : {ModuleOperations(), PropertyOperations(), DialogOperations()})
        all.insert(all.end(), operations.begin(), operations.end());
    return all;
}

// Fails every call of a set of functions in a set of operations, one at a time, and checks each: the outcome is one that
// the operation has then, nothing is left behind, no lock is left held, and the operation works again. Prints how many
// (function, call, operation) triples there were.
void Walk(std::span<const Operation> operations, const std::vector<std::string_view>& functions);

// Runs the one call that a fault is meant for.
template <class Act>
auto Call(CFault* pFault, const Act& act)
{
    if (pFault)
        pFault->Arm();
    auto result = act();
    if (pFault)
        pFault->Disarm();
    return result;
}

// The names of the results that failing calls have, the numbers of others.
inline std::string ResultText(HRESULT hr)
{
    if (hr == S_OK || hr == S_FALSE)
        return hr == S_OK ? "S_OK" : "S_FALSE";
    char szCode[16];
    std::snprintf(szCode, sizeof(szCode), "%08X", static_cast<unsigned>(hr));
    return hr == E_OUTOFMEMORY ? "E_OUTOFMEMORY" : szCode;
}

// The outcome of an operation that may hand out a new profile: result, modified flag, the profile as a tree or "kept".
class CProfileOutputs
{
public:
    BSTR* Text()
    {
        return &m_bstrModified;
    }
    BOOL* Flag()
    {
        return &m_bModified;
    }
    std::string Describe(HRESULT hr)
    {
        CBstr modified;
        const bool bKept = m_bstrModified == m_kept.Get();
        if (!bKept)
            *modified.Put() = m_bstrModified;
        return ResultText(hr) + " " + std::to_string(m_bModified) + " " + (bKept ? "kept" : ProfileTree(modified));
    }

private:
    CBstr m_kept{OLESTR("kept")};
    BSTR m_bstrModified = m_kept.Get();
    BOOL m_bModified = FALSE;
};
} // namespace tests::walk
