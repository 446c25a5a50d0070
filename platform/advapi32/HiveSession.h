// Exclusive use of the registry for one operation.
//
// The registry lives in registry.json below the root folder and is shared by every process that has the same root.
// A lock file beside it keeps writers from everybody else; within the process, operations follow one another. What was
// read stays in memory until the file changes, by whoever's hand.
#pragma once

#include "platform/advapi32/RegistryTree.h"

#include <mutex>

namespace platform::registry
{
// The registry cannot be used; the code is the operation's result.
struct HiveFailure
{
    LSTATUS lStatus;
};

// Owns a file descriptor.
class CDescriptor
{
public:
    explicit CDescriptor(int fd) : m_fd(fd)
    {
    }
    ~CDescriptor();
    CDescriptor(const CDescriptor&) = delete;
    CDescriptor& operator=(const CDescriptor&) = delete;

    int Get() const
    {
        return m_fd;
    }

private:
    int m_fd;
};

class CHiveSession
{
public:
    enum class Mode
    {
        Read,
        Write,
    };

    // Waits for its turn and reads the file when it changed; a missing file reads as the default registry.
    // Throws HiveFailure: ERROR_BADDB for a file that is not a registry, ERROR_REGISTRY_IO_FAILED when the files
    // cannot be used.
    explicit CHiveSession(Mode mode);
    ~CHiveSession();
    CHiveSession(const CHiveSession&) = delete;
    CHiveSession& operator=(const CHiveSession&) = delete;

    Key& Root();

    // Writes the changed tree (Mode::Write only), all of it or nothing. Throws HiveFailure with
    // ERROR_REGISTRY_IO_FAILED; the changes are then undone.
    void Save();

private:
    std::unique_lock<std::mutex> m_turn;
    CDescriptor m_lockFile;
    bool m_bDirty; // a writer may have changed the tree: what it did not save must not stay in memory
};
} // namespace platform::registry
