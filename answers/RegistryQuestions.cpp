// Keys below one that is empty at first, and values of the key that was opened last.
#include "answers/Shown.h"
#include "answers/World.h"

namespace answers
{
namespace
{
constexpr NamedValue rights[] = {{"read", KEY_READ}, {"all", KEY_ALL_ACCESS}};
constexpr NamedValue types[] = {{"text", REG_SZ}, {"bytes", REG_BINARY}, {"number", REG_DWORD}, {"other", 1234}};

HKEY Key(CWorld& world)
{
    return world.openedKey ? world.openedKey.Get() : world.Key();
}

std::string OpenKey(CWorld& world, CQuestion& question)
{
    const WCHAR* const szPath = question.Text();
    const REGSAM sam = question.OneOf(rights).dwValue;
    return ShownStatus(RegOpenKeyExW(world.Key(), szPath, 0, sam, world.openedKey.Put()));
}

std::string SetValue(CWorld& world, CQuestion& question)
{
    const WCHAR* const szName = question.Text();
    const DWORD dwType = question.OneOf(types).dwValue;
    const std::string bytes = question.Bytes();
    // Behind a text without terminator stand bytes that are no terminator either: the platform looks at them.
    const std::string stored = bytes + "zzzz";
    const auto* const pStored = reinterpret_cast<const BYTE*>(stored.data());
    return ShownStatus(RegSetValueExW(Key(world), szName, 0, dwType, pStored, static_cast<DWORD>(bytes.size())));
}

// With so much room; without a number the type and the size alone.
std::string QueryValue(CWorld& world, CQuestion& question)
{
    const WCHAR* const szName = question.Text();
    const bool bHasRoom = question.HasMore();
    DWORD cb = bHasRoom ? question.Number<DWORD>() : 77;
    std::string buffer(cb + 4, '#');
    auto* const pBuffer = bHasRoom ? reinterpret_cast<BYTE*>(buffer.data()) : nullptr;
    DWORD dwType = 77;
    const LSTATUS lStatus = RegQueryValueExW(Key(world), szName, nullptr, &dwType, pBuffer, &cb);
    std::string answer = ShownStatus(lStatus);
    if (lStatus == 0 || lStatus == ERROR_MORE_DATA)
        answer += ", type " + std::to_string(dwType) + ", size " + std::to_string(cb);
    if (bHasRoom && lStatus == 0)
        answer += ", " + ShownBytes(buffer.substr(0, buffer.find_last_not_of('#') + 1));
    return answer;
}

constexpr Verb verbs[] = {
    {"create-key", [](CWorld& world, CQuestion& question) { return ShownStatus(world.CreateKey(question.Text())); }},
    {"open-key", OpenKey},
    {"close-key", [](CWorld& world, CQuestion&) { return world.openedKey.Reset(), std::string("ok"); }},
    {"delete-key", [](CWorld& world, CQuestion& question) { return ShownStatus(RegDeleteKeyW(world.Key(), question.Text())); }},
    {"set", SetValue},
    {"query", QueryValue},
};
} // namespace

std::span<const Verb> RegistryVerbs()
{
    return verbs;
}
} // namespace answers
