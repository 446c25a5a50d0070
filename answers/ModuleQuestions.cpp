#include "answers/Shown.h"
#include "answers/Subjects.h"

#include "host/Library.h"
#include "tests/support/TestFolder.h"

#include <map>

namespace answers
{
namespace
{
// "%" at the front of a file's name stands for the program's folder, "@" for one with a "text.dll" that is none, a
// "short.dll" of one byte, an "empty.dll", and a "folder.dll".
class CModules final : public CSubject
{
public:
    CModules()
    {
        tests::WriteBytes(m_folder.Path() / "text.dll", std::string(5000, 'x'));
        tests::WriteBytes(m_folder.Path() / "short.dll", "x");
        tests::WriteBytes(m_folder.Path() / "empty.dll", "");
        std::filesystem::create_directory(m_folder.Path() / "folder.dll");
    }

    std::string Answer(CQuestion& question) override
    {
        static constexpr Verb<CModules> verbs[] = {{"load", &CModules::Load},     {"free", &CModules::Free},
                                                   {"string", &CModules::String}, {"handle", &CModules::Handle},
                                                   {"export", &CModules::Export}, {"no-thread-calls", &CModules::NoThreadCalls}};
        SetLastError(4711);
        return AnswerBy(verbs, *this, question);
    }

private:
    HMODULE Module(CQuestion& question)
    {
        return m_modules.at(question.Word()).Get();
    }

    std::string Load(CQuestion& question)
    {
        const std::string name = question.Word();
        const CWideView file = question.Text();
        CWideString path(file);
        if (file.starts_with(OLESTR('%')))
            path = BesideProgram(file.substr(1));
        if (file.starts_with(OLESTR('@')))
            path = m_folder.PlatformName(file.substr(1));
        SetLastError(4711);
        CUniqueModule module(LoadLibraryExW(path.c_str(), nullptr, 0));
        std::string answer = ShownSuccess(static_cast<bool>(module));
        for (const auto& [other, loaded] : m_modules)
            answer += module && loaded.Get() == module.Get() ? ", the same as " + other : "";
        if (module)
            m_modules[name] = std::move(module);
        return answer;
    }
    std::string Free(CQuestion& question)
    {
        const auto found = m_modules.find(question.Word());
        const HMODULE hModule = found->second.Detach();
        m_modules.erase(found);
        return ShownSuccess(FreeLibrary(hModule) != FALSE);
    }
    // string MODULE ROOM ID
    std::string String(CQuestion& question)
    {
        WCHAR szText[100];
        std::fill(std::begin(szText), std::end(szText), OLESTR('#'));
        const HMODULE hModule = Module(question);
        const auto cchRoom = static_cast<int>(question.Number());
        const int cch = LoadStringW(hModule, static_cast<UINT>(question.Number()), szText, cchRoom);
        return std::to_string(cch) + ", " + Shown(Touched({szText, std::size(szText)}, OLESTR('#')));
    }
    std::string Handle(CQuestion& question)
    {
        const HMODULE hModule = GetModuleHandleW(question.Text());
        const std::string answer = ShownSuccess(hModule != nullptr);
        for (const auto& [name, loaded] : m_modules)
        {
            if (loaded.Get() == hModule)
                return name;
        }
        return answer;
    }
    std::string Export(CQuestion& question)
    {
        const HMODULE hModule = Module(question);
        return ShownSuccess(GetProcAddress(hModule, question.Word().c_str()) != nullptr);
    }
    std::string NoThreadCalls(CQuestion& question)
    {
        return ShownSuccess(DisableThreadLibraryCalls(Module(question)) != FALSE);
    }

    const tests::CTestFolder m_folder;
    std::map<std::string, CUniqueModule> m_modules;
};
} // namespace

std::unique_ptr<CSubject> AskModules()
{
    return std::make_unique<CModules>();
}
} // namespace answers
