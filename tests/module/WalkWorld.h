// The world of a walk: the module on a simulated machine, registered, with its log on, loaded again whenever what it keeps
// until it is unloaded stands in the way.
#pragma once

#include "tests/module/Fault.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TraceLog.h"

#include <optional>

namespace tests::walk
{
// What is alive of everything that an operation may leave behind.
struct Alive
{
    std::vector<long> platform;
    LONG lServiceBlocks = 0;
    LONG lServiceHandles = 0;

    bool operator==(const Alive&) const = default;
};

// Its adapters are the maker's with every band, and one without any.
class CWorld
{
public:
    CWorld();
    ~CWorld();
    CWorld(const CWorld&) = delete;
    CWorld& operator=(const CWorld&) = delete;

    CSimulatedService service;
    CTraceLog log;
    CFault* pFault = nullptr; // of the next call

    void Load();
    void Unload();
    bool IsLoaded() const
    {
        return m_module.has_value();
    }
    CModuleUnderTest& Module()
    {
        return *m_module;
    }
    // Runs the one call that the fault is meant for.
    template <class Act>
    auto Call(const Act& act)
    {
        if (pFault)
            pFault->Arm();
        auto result = act();
        if (pFault)
            pFault->Disarm();
        return result;
    }

    Alive CountAlive() const;

    // Whether another thread's line is written, whole. Ends the program when that thread is kept waiting: nothing can be
    // tested any more beside a lock that is never given back.
    bool IsLineWritten();
    // Whether the log's file can be locked by others.
    bool IsLogFree() const;

private:
    std::optional<CModuleUnderTest> m_module;
};
} // namespace tests::walk
