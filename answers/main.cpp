// Asks the platform, or the module, the same questions on every build; scripts/compare-answers runs it on both.
//   korihvui_answers platform FOLDER                      holds the answers against the texts of the folder
//   korihvui_answers documents SHAPES FILE SEED COUNT     writes down what becomes of generated profiles
#include "answers/Agreed.h"
#include "answers/Documents.h"

#include "tests/support/TestFolder.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

int main(int nArguments, char** pszArguments)
{
    // Both are the stand-in's; the real platform does not look at them.
    const tests::CTestFolder stateFolder;
    SetEnvironmentVariableW(OLESTR("PLATFORM_ROOT"), stateFolder.PlatformName().c_str());
    SetEnvironmentVariableW(OLESTR("PLATFORM_DIALOGS"), OLESTR("none"));
    const std::string_view what = nArguments > 1 ? pszArguments[1] : "";
    if (what == "platform" && nArguments == 3)
        return answers::AskAgreed(pszArguments[2]) ? 0 : 1;
    if (what != "documents" || nArguments != 6)
    {
        std::fprintf(stderr, "usage: korihvui_answers platform FOLDER | documents SHAPES FILE SEED COUNT\n");
        return 2;
    }
    std::ofstream file(pszArguments[3], std::ios::binary);
    answers::RecordDocuments(file, answers::ReadDocumentShapes(pszArguments[2]),
                             static_cast<std::uint32_t>(std::strtoul(pszArguments[4], nullptr, 10)),
                             static_cast<unsigned>(std::strtoul(pszArguments[5], nullptr, 10)));
    return file.flush() ? 0 : 1;
}
