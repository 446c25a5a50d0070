// The registry in memory: a tree of keys with their values and rights.
#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform::registry
{
struct Value
{
    std::u16string name;
    DWORD dwType;
    std::vector<BYTE> data;
};

// What the user whom the process runs for may do with a key.
enum class Access
{
    None,
    Read,
    Full,
};

// Names are kept as written and found by their folded form.
struct Key
{
    std::u16string name;
    std::optional<Access> access; // inherited from the parent when absent
    std::map<std::u16string, Value> values;
    std::map<std::u16string, std::unique_ptr<Key>> keys;
};

// The folded names from the tree's root down to a key.
using Path = std::vector<std::u16string>;

// Deeper trees, and longer names, the platform refuses as well.
inline constexpr std::size_t maxDepth = 512;
inline constexpr std::size_t maxKeyNameLength = 256;
inline constexpr std::size_t maxValueNameLength = 16383;

// Whether a name may be given to a key or value: not longer than cchMax, and one that a text file can hold.
bool IsStorableName(std::u16string_view name, std::size_t cchMax);

// Names that differ in case only have the same folded form.
std::u16string FoldName(std::u16string_view name);

// A key with the rights that it and its ancestors leave to the user; no key when there is none of that name.
struct Place
{
    Key* pKey = nullptr;
    REGSAM samGranted = 0;
};
Place RootPlace(Key& root);
Place Descend(Place parent, const std::u16string& foldedName);
Place Locate(Key& root, const Path& path);

// Finds the sub-key or adds it.
Key& EnsureKey(Key& parent, std::u16string_view name);

// The components of a sub-key path as written, none for a null or empty path; no result for a path that begins with
// a separator.
std::optional<std::vector<std::u16string>> SplitSubKey(LPCWSTR szSubKey);
} // namespace platform::registry
