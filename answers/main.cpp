// Asks the platform, or the module, the same questions on every build and writes the answers down.
//   korihvui_answers platform FILE
//   korihvui_answers documents FILE SEED COUNT
#include "answers/Subjects.h"
#include "tests/support/TestFolder.h"

#include <cstdio>
#include <cstdlib>

namespace
{
using namespace answers;

struct Subject
{
    const char* szName;
    void (*pfnRecord)(CRecord&, const std::filesystem::path&);
};
constexpr Subject subjects[] = {
    {"registry", RecordRegistry}, {"files", RecordFiles},     {"paths", RecordPaths},
    {"locks", RecordLocks},       {"formats", RecordFormats}, {"resources", RecordResources},
};

void RecordPlatform(CRecord& record)
{
    for (const auto& subject : subjects)
    {
        const tests::CTestFolder folder;
        record.About(subject.szName);
        subject.pfnRecord(record, folder.Path());
    }
}
} // namespace

int main(int nArguments, char** pszArguments)
{
    const std::string_view what = nArguments > 1 ? pszArguments[1] : "";
    if ((what != "agreed" || nArguments < 3) && (what != "platform" || nArguments != 3) &&
        (what != "documents" || nArguments != 5))
    {
        std::fprintf(stderr, "usage: korihvui_answers platform FILE\n"
                             "       korihvui_answers documents FILE SEED COUNT\n");
        return 2;
    }
    // Both are the stand-in's; the real platform does not look at them.
    const tests::CTestFolder stateFolder;
    SetEnvironmentVariableW(OLESTR("PLATFORM_ROOT"), stateFolder.PlatformName().c_str());
    SetEnvironmentVariableW(OLESTR("PLATFORM_DIALOGS"), OLESTR("none"));
    if (what == "agreed")
        return AskAgreed(pszArguments[2], nArguments == 4) ? 0 : 1;
    CRecord record(pszArguments[2]);
    if (what == "platform")
        RecordPlatform(record);
    else
        RecordDocuments(record, static_cast<std::uint32_t>(std::strtoul(pszArguments[3], nullptr, 10)),
                        static_cast<unsigned>(std::strtoul(pszArguments[4], nullptr, 10)));
    return record.Finish() ? 0 : 1;
}
