// The registry, which lives below the root folder as a text that a person can read and edit (registry.json):
//
//   {"HKEY_LOCAL_MACHINE": {"keys": {"Software": {
//       "values": {"": "a text", "Count": 1, "Blob": {"type": 3, "bytes": [0, 255]}},
//       "keys": {...}}}}}
//
// A text stands for a terminated REG_SZ, a number for a REG_DWORD; everything else is written with its type.
#pragma once

#include "platform/kernel32/Failure.h"

#include <windows.h>

#include <nlohmann/json.hpp>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace platform::registry
{
using Json = nlohmann::ordered_json;

// The names from the registry's root down to a key.
using Path = std::vector<std::u16string>;

// The use of the registry for one operation. Every process that has the same root folder shares it: a lock file keeps
// writers from one another, and readers see what one of them left, whole. Within the process, operations follow one
// another. What was read stays in memory until the file changes, by whoever's hand.
class CHive
{
public:
    enum class Mode
    {
        Read,
        Write,
    };

    // Waits for its turn and reads the file when it changed; a missing file reads as the registry of a new machine. Throws
    // Failure: ERROR_BADDB for a file that is not a registry, ERROR_REGISTRY_IO_FAILED when the files cannot be used,
    // ERROR_LOCK_VIOLATION, after a line on standard error, when another process keeps the turn to itself.
    explicit CHive(Mode mode);
    ~CHive();
    CHive(const CHive&) = delete;
    CHive& operator=(const CHive&) = delete;

    // Null when there is no such key.
    Json* FindKey(const Path& path) const;

    // Adds what is missing of the key's path, in the names as they are written. Whether anything was.
    bool EnsureKey(const std::vector<std::u16string>& names) const;

    // Writes the changed registry (Mode::Write only), all of it or nothing. Throws ERROR_REGISTRY_IO_FAILED; the changes
    // are then undone.
    void Save();

private:
    std::unique_lock<std::mutex> m_turn;
    bool m_bDirty; // a writer may have changed the registry: what it did not save must not stay in memory
    class CWriterLock;
    std::unique_ptr<CWriterLock> m_writerLock;
};

// The member of a key's "keys" or "values" that has the name, in whatever case; null when there is none.
Json* FindMember(Json& key, const char* szPart, std::u16string_view name);

// Takes that member away. False when there is none.
bool EraseMember(Json& key, const char* szPart, std::u16string_view name);
} // namespace platform::registry
