#include "tests/module/Walker.h"

#include <iostream>
#include <regex>

namespace tests::walk
{
namespace
{
// Never reached: counts the calls.
constexpr unsigned never = 0xFFFFFFFF;

class CWalker
{
public:
    explicit CWalker(const std::vector<PlatformFunction>& functions) : m_functions(functions)
    {
        GetCurrentDirectoryW(MAX_PATH, m_szDirectory);
    }

    void Walk(const Operation& operation)
    {
        m_pOperation = &operation;
        m_otherOutcomes.assign(operation.szOtherOutcomes);
        Prepare();
        // Twice: what is kept from a first time on is not to be taken for what is left behind.
        m_usual = Run(nullptr);
        if (Run(nullptr) != m_usual)
            Complain("gives one outcome and then another: " + m_usual);
        for (const auto& function : m_functions)
        {
            CFault counting(m_world.Service(), function, never);
            m_fault = std::string(function.name);
            Run(&counting);
            for (unsigned uNth = 1; uNth <= counting.Calls(); ++uNth)
            {
                Try(function, uNth);
                // A dialog takes its time, and the next fault shows as well that the last one left it able to run.
                if (!operation.IsDialog() || uNth == counting.Calls())
                    CheckWorks();
            }
        }
        m_world.Unload();
    }

    std::size_t Triples() const
    {
        return m_nTriples;
    }
    const std::vector<std::string>& Complaints() const
    {
        return m_complaints;
    }

private:
    void Prepare()
    {
        if (m_pOperation->Loads())
            m_world.Unload();
        else if (!m_world.IsLoaded())
            m_world.Load();
    }

    std::string Run(CFault* pFault)
    {
        auto outcome = m_pOperation->run(m_world, pFault);
        SetCurrentDirectoryW(m_szDirectory);
        return outcome;
    }

    void Try(const PlatformFunction& function, unsigned uNth)
    {
        CFault fault(m_world.Service(), function, uNth);
        m_fault = fault.Name();
        const Alive before = m_world.CountAlive();
        const std::string outcome = Run(&fault);
        if (!fault.HasFired())
            return;
        ++m_nTriples;
        if (!IsAllowed(function.effect, outcome))
            Complain("gives " + outcome + " in place of " + m_usual);
        CheckLeft(before);
        CheckLog(function.effect);
    }

    void CheckWorks()
    {
        if (const auto again = Run(nullptr); again != m_usual)
            Complain("gives " + again + " afterwards, in place of " + m_usual);
    }

    bool IsAllowed(FaultEffect effect, const std::string& outcome) const
    {
        if (outcome == m_usual)
            return true;
        if (!m_pOperation->IsDialog() && (effect == FaultEffect::Nothing || effect == FaultEffect::QuietLog))
            return false;
        if (effect == FaultEffect::Memory && outcome == m_pOperation->outOfMemory)
            return true;
        return std::regex_match(outcome, m_otherOutcomes);
    }

    void CheckLeft(const Alive& before)
    {
        Alive after = m_world.CountAlive();
        // The module never closes the one handle that it keeps for the process.
        if (m_pOperation->Loads() && after.lServiceHandles == before.lServiceHandles + 1)
            --after.lServiceHandles;
        if (after != before)
            Complain("leaves something behind");
        if (m_world.IsLoaded() && m_world.Module().CanUnloadNow() != S_OK)
            Complain("keeps the module loaded");
    }

    void CheckLog(FaultEffect effect)
    {
        const bool bLoadedHere = !m_world.IsLoaded();
        if (bLoadedHere)
            m_world.Load();
        if (!m_world.IsLogFree())
            Complain("leaves the log locked");
        if (!m_world.IsLineWritten())
        {
            if (effect != FaultEffect::QuietLog || bLoadedHere)
                Complain("silences the log");
            m_world.Unload();
            m_world.Load();
            if (!m_world.IsLineWritten())
                Complain("silences the log for good");
            // What is kept from a first time on.
            if (!bLoadedHere)
                Run(nullptr);
        }
        if (bLoadedHere)
            m_world.Unload();
    }

    void Complain(const std::string& what)
    {
        m_complaints.push_back(std::string(m_pOperation->name) + ", " + m_fault + ": " + what);
    }

    const std::vector<PlatformFunction>& m_functions;
    CWorld m_world;
    WCHAR m_szDirectory[MAX_PATH] = {};
    const Operation* m_pOperation = nullptr;
    std::regex m_otherOutcomes;
    std::string m_usual;
    std::string m_fault = "no fault";
    std::size_t m_nTriples = 0;
    std::vector<std::string> m_complaints;
};
} // namespace

void Walk(std::span<const Operation> operations, const std::vector<PlatformFunction>& functions)
{
    // The module echoes every line of its log.
    testing::internal::CaptureStdout();
    CWalker walker(functions);
    for (const auto& operation : operations)
        walker.Walk(operation);
    testing::internal::GetCapturedStdout();
    constexpr std::size_t nShown = 40;
    for (std::size_t i = 0; i < std::min(nShown, walker.Complaints().size()); ++i)
        ADD_FAILURE() << walker.Complaints()[i];
    EXPECT_TRUE(walker.Complaints().empty()) << walker.Complaints().size() << " in all";
    EXPECT_NE(0u, walker.Triples());
    std::cout << "tried " << walker.Triples() << " triples of function, call and operation\n";
}
} // namespace tests::walk
