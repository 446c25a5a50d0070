// The public operations of the module, each with ordinary arguments, and what may become of them when the platform fails.
#pragma once

#include "tests/module/Fault.h"
#include "tests/module/WalkWorld.h"

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
        Dialog, // on the stand-in the simulated service meets the faults of the functions that it shares with the module,
                // so that any of them may change its answers
        LoadsDialog,
    };
    Kind kind;
    bool Loads() const
    {
        return kind == Kind::Loads || kind == Kind::LoadsDialog;
    }
    bool IsDialog() const
    {
        return kind == Kind::Dialog || kind == Kind::LoadsDialog;
    }
    // Prepares what it needs, runs the operation, armed with the fault when there is one, and puts everything back.
    // The outcome is the result followed by every output.
    std::string (*run)(CWorld& world, CFault* pFault);
    // The outcome of running out of memory: the result and outputs that were not touched. "" where there is no such way out.
    std::string_view outOfMemory;
    // Outcomes, as a regular expression, that the operation may have besides the one without a fault.
    const char* szOtherOutcomes;
};

inline void PrintTo(const Operation& operation, std::ostream* pStream)
{
    *pStream << operation.name;
}

std::span<const Operation> ModuleOperations();
std::span<const Operation> ObjectOperations();
std::span<const Operation> PropertyOperations();
std::span<const Operation> DialogOperations();

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

std::string ResultText(HRESULT hr);

// The outcome of an operation that may hand out a new profile: result, modified flag, the profile as a tree or "kept".
class CProfileOutputs
{
public:
    CProfileOutputs() : m_bstrModified(m_kept.Get())
    {
    }
    BSTR* Text()
    {
        return &m_bstrModified;
    }
    BOOL* Flag()
    {
        return &m_bModified;
    }
    std::string Describe(HRESULT hr);

private:
    CBstr m_kept{OLESTR("kept")};
    BSTR m_bstrModified;
    BOOL m_bModified = FALSE;
};
} // namespace tests::walk
