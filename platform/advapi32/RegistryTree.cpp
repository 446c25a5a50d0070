#include "platform/advapi32/RegistryTree.h"

#include "platform/kernel32/Unicode.h"

#include <algorithm>
#include <clocale>
#include <cwctype>

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

char16_t FoldUnit(char16_t unit)
{
    // The process's own locale must not decide which keys are the same.
    static const locale_t unicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (unit < 0x80 || !unicode)
        return unit >= u'a' && unit <= u'z' ? static_cast<char16_t>(unit - u'a' + u'A') : unit;
    const auto folded = static_cast<char32_t>(towupper_l(static_cast<wint_t>(unit), unicode));
    return folded <= 0xFFFF ? static_cast<char16_t>(folded) : unit;
}
} // namespace

bool IsStorableName(std::u16string_view name, std::size_t cchMax)
{
    return name.size() <= cchMax && FromUtf8(ToUtf8(name)) == name;
}

std::u16string FoldName(std::u16string_view name)
{
    std::u16string folded(name);
    std::ranges::transform(folded, folded.begin(), FoldUnit);
    return folded;
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
