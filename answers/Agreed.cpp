// The agreed texts: a line for each question, "question -> answer". A line that is indented goes on in the world of the line
// before it, any other begins a new one. "Wine -> answer  # reason" below a question is what Wine is known to answer instead.
#include "answers/Answers.h"

#include "answers/World.h"

#include <cstdio>
#include <fstream>
#include <optional>
#include <vector>

namespace answers
{
namespace
{
struct Agreement
{
    std::string question; // with its indentation
    std::string answer;
};

bool IsWine()
{
    const HMODULE hSystem = GetModuleHandleW(OLESTR("ntdll.dll"));
    return hSystem && GetProcAddress(hSystem, "wine_get_version");
}

std::vector<Agreement> ReadAgreements(const std::filesystem::path& file, bool bUnderWine)
{
    std::vector<Agreement> agreements;
    std::ifstream text(file);
    for (std::string line; std::getline(text, line);)
    {
        const auto nEnd = line.find(" -> ");
        const std::string answer = nEnd == line.npos ? "" : line.substr(nEnd + 4);
        if (line.empty() || line[0] == '#')
            continue;
        if (!line.starts_with("  Wine -> "))
            agreements.push_back({line.substr(0, nEnd), answer});
        else if (bUnderWine)
            agreements.back().answer = answer.substr(0, answer.find("  # "));
    }
    return agreements;
}

const Verb& VerbOf(CQuestion& question)
{
    const std::string word = question.Word();
    for (const auto verbs : {FileVerbs(), RegistryVerbs(), TextVerbs()})
    {
        if (const auto verb = std::ranges::find(verbs, word, &Verb::szName); verb != verbs.end())
            return *verb;
    }
    throw std::invalid_argument("unknown verb");
}

std::string Answered(CWorld& world, std::string_view text)
try
{
    CQuestion question(text);
    const Verb& verb = VerbOf(question);
    SetLastError(4711);
    const std::string answer = verb.pfnAnswer(world, question);
    return question.HasMore() ? "there are words too many" : answer + world.ShownChanges();
}
catch (const std::exception& error)
{
    return error.what();
}
} // namespace

bool AskAgreed(const std::filesystem::path& folder)
{
    const bool bUnderWine = IsWine();
    unsigned uAsked = 0;
    unsigned uDiffering = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder))
    {
        std::optional<CWorld> world; // gone, with its current folder, before the next file
        for (const Agreement& agreed : ReadAgreements(file.path(), bUnderWine))
        {
            if (agreed.question[0] != ' ')
                world.emplace();
            ++uAsked;
            const std::string given = Answered(*world, agreed.question);
            if (given == agreed.answer)
                continue;
            ++uDiffering;
            std::printf("%s: %s\n  agreed: %s\n  given:  %s\n", file.path().stem().string().c_str(), agreed.question.c_str(),
                        agreed.answer.c_str(), given.c_str());
        }
    }
    std::printf("platform: %u questions asked, %u answered differently\n", uAsked, uDiffering);
    return uAsked != 0 && uDiffering == 0;
}
} // namespace answers
