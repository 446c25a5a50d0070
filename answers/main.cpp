// Asks the platform, or the module, the same questions on every build; scripts/compare-answers runs it on both.
//   korihvui_answers platform FOLDER            holds the answers against the texts of the folder
//   korihvui_answers documents PROFILES RECORD  writes down what becomes of the profiles
#include "answers/Answers.h"

#include "tests/support/TestFolder.h"

#include <cstdio>
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
    if (what != "documents" || nArguments != 4)
    {
        std::fprintf(stderr, "usage: korihvui_answers platform FOLDER | documents PROFILES RECORD\n");
        return 2;
    }
    std::ifstream documents(pszArguments[2]);
    std::ofstream record(pszArguments[3], std::ios::binary);
    answers::RecordDocuments(documents, record);
    return record.flush() ? 0 : 1;
}
