#include "tests/module/Operation.h"
#include "tests/support/PlatformFunctions.h"

#include <algorithm>
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
    explicit CWalker(const std::vector<std::string_view>& functions) : m_functions(functions)
    {
        GetCurrentDirectoryW(MAX_PATH, m_szDirectory);
    }

    void Walk(const Operation& operation)
    {
        m_pOperation = &operation;
        Prepare();
        // Twice: what is kept from a first time on is not to be taken for what is left behind.
        m_usual = Run(nullptr);
        if (Run(nullptr) != m_usual)
            Complain("gives one outcome and then another: " + m_usual);
        for (const auto function : m_functions)
        {
            CFault counting(m_world.Service(), function, never);
            Run(&counting);
            for (unsigned uNth = 1; uNth <= counting.Calls(); ++uNth)
            {
                m_fault = std::string(function) + " " + std::to_string(uNth);
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

    // The outcome with the error lines that were traced.
    std::string Run(CFault* pFault)
    {
        m_world.Log().Take();
        auto outcome = m_pOperation->run(m_world, pFault);
        SetCurrentDirectoryW(m_szDirectory);
        for (const auto& line : m_world.Log().Take())
        {
            static const std::regex error(R"(\*\*\* ?(?:Error: )?(?:returning )?(\w+)[^]*)");
            std::smatch match;
            if (std::regex_match(line, match, error))
                outcome += " traced " + match[1].str();
        }
        return outcome;
    }

    void Try(std::string_view function, unsigned uNth)
    {
        CFault fault(m_world.Service(), function, uNth);
        const Alive before = m_world.CountAlive();
        const std::string outcome = Run(&fault);
        if (!fault.HasFired())
            return;
        ++m_nTriples;
        if (!IsAllowed(function, outcome))
            Complain("gives " + outcome + " in place of " + m_usual);
        CheckLeft(before);
        CheckLog(IsIn(function, quietingFunctions));
    }

    void CheckWorks()
    {
        if (const auto again = Run(nullptr); again != m_usual)
            Complain("gives " + again + " afterwards, in place of " + m_usual);
    }

    static bool IsIn(std::string_view function, std::span<const std::string_view> functions)
    {
        return std::ranges::find(functions, function) != functions.end();
    }

    bool IsAllowed(std::string_view function, const std::string& outcome) const
    {
        const std::string name(function);
        const auto& failures = m_pOperation->failures;
        const auto failure =
            std::ranges::find_if(failures, [&](const auto& row) { return std::regex_match(name, std::regex(row.szFunctions)); });
        // What fails for the log may cost it a line, and changes nothing else.
        const bool bLogFails = function == operatorNew || IsIn(function, quietingFunctions) || IsIn(function, lineFunctions);
        if (bLogFails && (outcome == m_usual || outcome == m_usual.substr(0, m_usual.find(" traced "))))
            return true;
        if (failure == failures.end())
            return outcome == m_usual;
        return std::regex_match(outcome, std::regex(failure->szOutcomes));
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
        m_complaints.push_back(std::string(m_pOperation->name) + ", " + m_fault + ": " + what);
    }

    const std::vector<std::string_view>& m_functions;
    CWorld m_world;
    WCHAR m_szDirectory[MAX_PATH] = {};
    const Operation* m_pOperation = nullptr;
    std::string m_usual;
    std::string m_fault = "no fault";
    std::size_t m_nTriples = 0;
    std::vector<std::string> m_complaints;
};
} // namespace

void Walk(std::span<const Operation> operations, const std::vector<std::string_view>& functions)
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
