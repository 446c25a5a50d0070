// The registry as a text that a person can read and edit.
//
//   {"HKEY_LOCAL_MACHINE": {"keys": {"Software": {
//       "access": "read",                                  none, read or full; holds for the sub-keys too
//       "values": {"": "a text", "Count": 1, "Blob": {"type": "REG_BINARY", "hex": "00FF"}},
//       "keys": {...}}}}}
//
// A text stands for a terminated REG_SZ, a number for a REG_DWORD; everything else is written with its type.
#pragma once

#include "platform/advapi32/RegistryTree.h"

#include <stdexcept>
#include <string>

namespace platform::registry
{
class CMalformedHive : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Throws CMalformedHive, saying what is wrong, for a text that is not a registry.
std::unique_ptr<Key> ParseHive(const std::string& text);

// The text gives the same tree again, byte for byte.
std::string WriteHive(const Key& root);

// What a machine has before anything is registered.
std::unique_ptr<Key> DefaultHive();
} // namespace platform::registry
