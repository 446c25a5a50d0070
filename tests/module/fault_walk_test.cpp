// Every platform function fails at every call in every public operation, and so does every allocation of the language's.
#include "tests/module/Operation.h"
#include "tests/support/Pattern.h"

#include <algorithm>
#include <iostream>
#include <set>

namespace
{
using namespace tests::walk;
using tests::PlatformFunction;

// Fails every call of each function in each operation, one at a time, and checks each: the outcome is one that the operation
// has then, nothing is left behind, no lock is left held, and the operation works again.
class CWalker
{
public:
    explicit CWalker(std::span<const PlatformFunction> functions) : m_functions(functions)
    {
        GetCurrentDirectoryW(MAX_PATH, m_szDirectory);
    }

    void Walk(const Operation& operation)
    {
        m_pOperation = &operation;
        operation.Prepare(m_world);
        // Twice: what is kept from a first time on is not to be taken for what is left behind.
        m_usual = Run(nullptr);
        if (Run(nullptr) != m_usual)
            Complain("gives one outcome and then another: " + m_usual);
        CCallCounter counter(m_functions);
        Run(&counter);
        for (const auto& function : m_functions)
        {
            const unsigned uCalls = counter.calls[function.szName];
            for (unsigned uNth = 1; uNth <= uCalls; ++uNth)
            {
                m_fault = std::string(function.szName) + " " + std::to_string(uNth);
                Try(function, uNth);
                // A dialog takes its time, and the next fault shows as well that the last one left it able to run.
                if (!IsDialog(operation) || uNth == uCalls)
                    CheckWorks();
            }
        }
        m_world.Unload();
    }

    std::size_t nTriples = 0;
    std::vector<std::string> complaints;

private:
    // The outcome with the error lines that were traced.
    std::string Run(CFault* pFault)
    {
        m_world.log.Take();
        m_world.pFault = pFault;
        auto outcome = m_pOperation->Outcome(m_world);
        m_world.pFault = nullptr;
        SetCurrentDirectoryW(m_szDirectory);
        for (const auto& line : m_world.log.Take())
        {
            if (const auto match = tests::MatchOf(line, R"(\*\*\* ?(?:Error: )?(?:returning )?(\w+)[^]*)"); !match.empty())
                outcome += " traced " + match[1];
        }
        return outcome;
    }

    void Try(const PlatformFunction& function, unsigned uNth)
    {
        CFault fault(function, uNth);
        const Alive before = m_world.CountAlive();
        const std::string outcome = Run(&fault);
        if (!fault.HasFired())
            return;
        ++nTriples;
        if (!IsAllowed(function, outcome))
            Complain("gives " + outcome + " in place of " + m_usual);
        CheckLeft(before);
        CheckLog((function.uTraits & tests::quiets) != 0);
    }

    void CheckWorks()
    {
        if (const auto again = Run(nullptr); again != m_usual)
            Complain("gives " + again + " afterwards, in place of " + m_usual);
    }

    bool IsAllowed(const PlatformFunction& function, const std::string& outcome) const
    {
        // What fails for the log may cost it a line, and changes nothing else.
        const bool bLogFails = (function.uTraits & (tests::quiets | tests::costsALine)) != 0;
        if (bLogFails && (outcome == m_usual || outcome == m_usual.substr(0, m_usual.find(" traced "))))
            return true;
        const auto& failures = m_pOperation->failures;
        const auto failure =
            std::ranges::find_if(failures, [&](const auto& row) { return tests::Matches(function.szName, row.szFunctions); });
        return failure == failures.end() ? outcome == m_usual : tests::Matches(outcome, failure->szOutcomes);
    }

    void CheckLeft(const Alive& before)
    {
        Alive after = m_world.CountAlive();
        // The module never closes the one handle that it keeps for the process.
        if (m_pOperation->bLoads && after.lServiceHandles == before.lServiceHandles + 1)
            --after.lServiceHandles;
        if (after != before)
            Complain("leaves something behind");
        if (m_world.IsLoaded() && m_world.Module().CanUnloadNow() != S_OK)
            Complain("keeps the module loaded");
    }

    void CheckLog(bool bMayBeQuiet)
    {
        const bool bLoadedHere = !m_world.IsLoaded();
        if (bLoadedHere)
            m_world.Load();
        if (!m_world.IsLogFree())
            Complain("leaves the log locked");
        if (!m_world.IsLineWritten())
        {
            if (!bMayBeQuiet || bLoadedHere)
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
        complaints.push_back(std::string(m_pOperation->szName) + ", " + m_fault + ": " + what);
    }

    std::span<const PlatformFunction> m_functions;
    CWorld m_world;
    WCHAR m_szDirectory[MAX_PATH] = {};
    const Operation* m_pOperation = nullptr;
    std::string m_usual;
    std::string m_fault = "no fault";
};

// A function that no operation calls would be walked without ever failing.
TEST(FaultWalk, EachFunctionIsCalledSomewhere)
{
    CWorld world;
    CCallCounter counter(tests::PlatformFunctions());
    std::set<std::string> uncalled;
    for (const auto& function : tests::PlatformFunctions())
        uncalled.insert(function.szName);
    // A folder without a language file, so that the search for one goes all its way.
    const tests::CTestFolder elsewhere;
    ASSERT_TRUE(SetCurrentDirectoryW(elsewhere.PlatformName().c_str()));
    testing::internal::CaptureStdout();
    for (const auto& operation : AllOperations())
    {
        operation.Prepare(world);
        counter.Arm();
        operation.Outcome(world);
        counter.Disarm();
        std::erase_if(uncalled, [&](const std::string& name) { return counter.calls[name] != 0; });
    }
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(std::set<std::string>{}, uncalled);
    SetCurrentDirectoryW(tests::PlatformNameOf(tests::BuildFolder()).c_str());
}

// The operations that share a process: a dialog takes its time.
struct Group
{
    std::string name;
    std::span<const Operation> operations;
};
void PrintTo(const Group& group, std::ostream* pOut)
{
    *pOut << group.name;
}

std::vector<Group> Groups()
{
    std::vector<Group> groups = {{"module", ModuleOperations()}, {"properties", PropertyOperations()}};
    for (const auto& dialog : DialogOperations())
        groups.push_back({dialog.szName, {&dialog, 1}});
    return groups;
}

class FaultWalkOf : public testing::TestWithParam<Group>
{
protected:
    static void Walk(std::span<const PlatformFunction> functions)
    {
        // The module echoes every line of its log.
        testing::internal::CaptureStdout();
        CWalker walker(functions);
        for (const auto& operation : GetParam().operations)
            walker.Walk(operation);
        testing::internal::GetCapturedStdout();
        EXPECT_EQ(std::vector<std::string>{}, walker.complaints);
        EXPECT_NE(0u, walker.nTriples);
        std::cout << "tried " << walker.nTriples << " triples of function, call and operation\n";
    }
};
TEST_P(FaultWalkOf, Functions)
{
    Walk(tests::PlatformFunctions());
}
TEST_P(FaultWalkOf, Allocations)
{
    Walk({&tests::allocation, 1});
}
INSTANTIATE_TEST_SUITE_P(Each, FaultWalkOf, testing::ValuesIn(Groups()), [](const auto& row) { return row.param.name; });
} // namespace
