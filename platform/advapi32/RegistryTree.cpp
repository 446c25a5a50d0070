#include "platform/advapi32/RegistryTree.h"

#include "platform/kernel32/Unicode.h"

#include <algorithm>

namespace platform::registry
{
namespace
{
REGSAM GrantedRights(Access access)
{
    switch (access)
    {
    case Access::None:
        return 0;
    case Access::Read:
        return KEY_READ;
    case Access::Full:
        break;
    }
    return KEY_ALL_ACCESS;
}
} // namespace

bool IsStorableName(std::u16string_view name, std::size_t cchMax)
{
    return name.size() <= cchMax && FromUtf8(ToUtf8(name)) == name;
}

std::u16string FoldName(std::u16string_view name)
{
    return FoldCase(name);
}

Place RootPlace(Key& root)
{
    return {&root, GrantedRights(root.access.value_or(Access::Full))};
}

Place Descend(Place parent, const std::u16string& foldedName)
{
    const auto found = parent.pKey->keys.find(foldedName);
    if (found == parent.pKey->keys.end())
        return {};
    Key& key = *found->second;
    return {&key, key.access ? GrantedRights(*key.access) : parent.samGranted};
}

Place Locate(Key& root, const Path& path)
{
    Place place = RootPlace(root);
    for (const auto& name : path)
    {
        place = Descend(place, name);
        if (!place.pKey)
            break;
    }
    return place;
}

Key& EnsureKey(Key& parent, std::u16string_view name)
{
    auto& slot = parent.keys[FoldName(name)];
    if (!slot)
    {
        slot = std::make_unique<Key>();
        slot->name = name;
    }
    return *slot;
}

std::optional<std::vector<std::u16string>> SplitSubKey(LPCWSTR szSubKey)
{
    std::vector<std::u16string> names;
    std::u16string_view rest = szSubKey ? szSubKey : u"";
    if (rest.starts_with(u'\\'))
        return std::nullopt;
    while (!rest.empty())
    {
        const auto name = rest.substr(0, rest.find(u'\\'));
        if (!name.empty())
            names.emplace_back(name);
        rest.remove_prefix(std::min(name.size() + 1, rest.size()));
    }
    return names;
}
} // namespace platform::registry
