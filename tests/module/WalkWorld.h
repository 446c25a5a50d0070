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
    CSimulatedService& Service()
    {
        return m_service;
    }
    CTraceLog& Log()
    {
        return m_log;
    }
    // Runs the one call that a fault is meant for.
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
    CFault* pFault = nullptr;

    // Puts the wireless profile of both adapters back to what it was.
    void ResetProfiles() const;

    Alive CountAlive() const;

    // Whether another thread's line is written, whole. Ends the program when that thread is kept waiting: nothing can be
    // tested any more beside a lock that is never given back.
    bool IsLineWritten();
    // Whether the log's file can be locked by others.
    bool IsLogFree() const;

private:
    CSimulatedService m_service;
    CTraceLog m_log;
    std::optional<CModuleUnderTest> m_module;
};
} // namespace tests::walk
