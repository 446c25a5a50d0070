// The agreed texts: a line for each question, "question -> answer". A line that is indented goes on in the world of the line
// before it, any other begins a new one. "Wine -> answer  # reason" below a question is what Wine is known to answer instead.
#include "answers/Agreed.h"

#include "answers/World.h"

#include <cstdio>
#include <optional>
#include <sstream>
#include <vector>

namespace answers
{
namespace
{
constexpr std::string_view arrow = " -> ";
constexpr std::string_view wrong = "cannot be asked: ";

struct Line
{
    std::string question; // with its indentation; or a comment, or nothing
    std::string answer;
    std::string wine; // all of the line below, "" for none

    bool IsQuestion() const
    {
        return !question.empty() && question[0] != '#';
    }
    std::string Expected(bool bUnderWine) const
    {
        if (!bUnderWine || wine.empty())
            return answer;
        const auto nStart = wine.find(arrow) + arrow.size();
        return wine.substr(nStart, wine.find("  # ") - nStart);
    }
};

std::vector<Line> ReadLines(const std::filesystem::path& file)
{
    std::vector<Line> lines;
    std::istringstream text(tests::ReadBytes(file));
    for (std::string line; std::getline(text, line);)
    {
        const auto nArrow = line.find(arrow);
        const bool bIsWines = line.substr(0, nArrow).ends_with(" Wine");
        if (bIsWines && !lines.empty())
            lines.back().wine = line;
        else if (nArrow == std::string::npos)
            lines.push_back({line, "", ""});
        else
            lines.push_back({line.substr(0, nArrow), line.substr(nArrow + arrow.size()), ""});
    }
    return lines;
}

void WriteLines(const std::filesystem::path& file, const std::vector<Line>& lines)
{
    std::string text;
    for (const auto& line : lines)
        text.append(line.question)
            .append(line.IsQuestion() ? std::string(arrow) + line.answer : "")
            .append(line.wine.empty() ? "" : "\n" + line.wine)
            .append("\n");
    tests::WriteBytes(file, text);
}

bool IsWine()
{
    const HMODULE hSystem = GetModuleHandleW(OLESTR("ntdll.dll"));
    return hSystem && GetProcAddress(hSystem, "wine_get_version");
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
{
    try
    {
        CQuestion question(text);
        const Verb& verb = VerbOf(question);
        SetLastError(4711);
        std::string answer = verb.pfnAnswer(world, question);
        answer += world.ShownChanges();
        return question.HasMore() ? throw std::invalid_argument("there are words too many") : answer;
    }
    catch (const std::exception& error)
    {
        return std::string(wrong) + error.what();
    }
}
} // namespace

bool AskAgreed(const std::filesystem::path& folder, bool bRewrites)
{
    const bool bUnderWine = IsWine();
    unsigned uAsked = 0;
    unsigned uDiffering = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder))
    {
        std::vector<Line> lines = ReadLines(file.path());
        std::optional<CWorld> world;
        for (auto& line : lines)
        {
            if (!line.IsQuestion())
                continue;
            if (line.question[0] != ' ')
                world.emplace();
            ++uAsked;
            const std::string given = Answered(*world, line.question);
            if (bRewrites && !given.starts_with(wrong))
                line.answer = given;
            const std::string expected = line.Expected(bUnderWine);
            if (given != expected || given.starts_with(wrong))
            {
                ++uDiffering;
                std::printf("%s: %s\n  agreed: %s\n  given:  %s\n", file.path().stem().string().c_str(), line.question.c_str(),
                            expected.c_str(), given.c_str());
            }
        }
        world.reset(); // with its current folder
        if (bRewrites)
            WriteLines(file.path(), lines);
    }
    std::printf("platform: %u questions asked, %u answered differently\n", uAsked, uDiffering);
    return uAsked != 0 && uDiffering == 0;
}
} // namespace answers
