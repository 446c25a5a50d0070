// Modules and language files, and their strings.
#include "answers/Shown.h"
#include "answers/World.h"

namespace answers
{
namespace
{
std::string ShownModule(const CWorld& world, HMODULE hModule, const char* szOne)
{
    const std::string answer = ShownSuccess(hModule != nullptr);
    for (const auto& [name, loaded] : world.modules)
    {
        if (hModule && loaded.Get() == hModule)
            return szOne + name;
    }
    return answer;
}

std::string Load(CWorld& world, CQuestion& question)
{
    const std::string name = question.Word();
    const WCHAR* const szFile = world.Place(question);
    SetLastError(4711);
    CUniqueModule module(LoadLibraryExW(szFile, nullptr, 0));
    const std::string answer = ShownModule(world, module.Get(), "ok, the same as ");
    if (module)
        world.modules[name] = std::move(module);
    return answer;
}

std::string Free(CWorld& world, CQuestion& question)
{
    const std::string name = question.Word();
    const BOOL bFreed = FreeLibrary(world.modules.at(name).Detach());
    world.modules.erase(name);
    return ShownSuccess(bFreed);
}

std::string String(CWorld& world, CQuestion& question)
{
    CWideString buffer(100, OLESTR('#'));
    const HMODULE hModule = world.modules.at(question.Word()).Get();
    const auto cchRoom = question.Number<int>();
    const int cch = LoadStringW(hModule, question.Number<UINT>(), buffer.data(), cchRoom);
    return std::to_string(cch) + ", " + Shown(Touched(buffer));
}

std::string Export(CWorld& world, CQuestion& question)
{
    const HMODULE hModule = world.modules.at(question.Word()).Get();
    return ShownSuccess(GetProcAddress(hModule, question.Word().c_str()) != nullptr);
}

constexpr Verb verbs[] = {
    {"load", Load},
    {"free", Free},
    {"string", String},
    {"export", Export},
    {"module",
     [](CWorld& world, CQuestion& question) { return ShownModule(world, GetModuleHandleW(question.Text()), "the same as "); }},
};
} // namespace

std::span<const Verb> ModuleVerbs()
{
    return verbs;
}
} // namespace answers
