// What happens when a host loads and unloads the module: its language resources and COM. (Its log has tests of its own.)
#include "platform/testing/Faults.h"
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TestProgram.h"

#include <cstdio>
#include <thread>

namespace
{
namespace fs = std::filesystem;
using tests::CModuleUnderTest;

constexpr auto resourceFile = "korihvui.dll.mui";

CWideString CurrentDirectory()
{
    WCHAR szCurrent[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, szCurrent);
    return szCurrent;
}

// A folder holds the language file afterwards, or none for an empty source.
void Place(const fs::path& source, const fs::path& folder)
{
    fs::remove(folder / resourceFile);
    if (source.empty())
        return;
    fs::create_directories(folder);
    fs::copy_file(source, folder / resourceFile);
}

bool SearchFindsFiles(const CWideString& language)
{
    WCHAR szLanguage[LOCALE_NAME_MAX_LENGTH] = {};
    language.copy(szLanguage, LOCALE_NAME_MAX_LENGTH - 1);
    WCHAR szPath[MAX_PATH] = {};
    ULONG cchLanguage = LOCALE_NAME_MAX_LENGTH;
    ULONG cchPath = MAX_PATH;
    ULONGLONG ullEnumerator = 0;
    return GetFileMUIPath(0, OLESTR("korihvui.dll.mui"), szLanguage, &cchLanguage, szPath, &cchPath, &ullEnumerator) != FALSE;
}

// Runs in a copy of the program, beside which no language files lie; the build with them is the current directory.
TEST(ModuleEntry, DISABLED_LanguageFileByItsPlace)
{
    SetEnvironmentVariableW(OLESTR("LC_ALL"), OLESTR("de_DE.UTF-8")); // only the stand-in takes the language from there
    WCHAR szLocale[LOCALE_NAME_MAX_LENGTH] = {};
    ASSERT_NE(0, GetUserDefaultLocaleName(szLocale, LOCALE_NAME_MAX_LENGTH));
    const auto language = tests::Narrow(szLocale);
    const fs::path none;
    const fs::path english = fs::current_path() / "en-US" / resourceFile;
    const fs::path german = fs::current_path() / "de-DE" / resourceFile;
    WCHAR szSystem[MAX_PATH + 1] = {};
    ASSERT_NE(0u, GetSystemDirectoryW(szSystem, MAX_PATH + 1));
    ASSERT_TRUE(SetCurrentDirectoryW(szSystem));
    const auto inSystem = fs::current_path() / language;
    const auto inEnglish = tests::ProgramFile().parent_path() / "en-US";
    const tests::CTestFolder folder;
    const auto inCurrent = folder.Path() / language;
    ASSERT_TRUE(SetCurrentDirectoryW(folder.PlatformName().c_str()));
    const auto before = CurrentDirectory();
    Place(english, inCurrent);
    const bool bSearchFindsFiles = SearchFindsFiles(szLocale);
    if (!bSearchFindsFiles)
        std::puts("left out: this platform's search for language files finds none");

    enum Shown
    {
        own,         // the module's texts, with no file loaded
        englishFile, // the same, out of a file
        germanFile,
    };
    const struct
    {
        const char* name;
        fs::path current; // what lies in the user's language in the current directory
        fs::path system;  // and in the system directory
        fs::path english; // as the English file beside the program
        Shown shown;
        const char* szFails = nullptr; // this function, at its first call
    } rows[] = {
        {"no_file", none, none, none, own},
        {"english_file", none, none, english, englishFile},
        {"current_directory_first", german, english, english, germanFile},
        {"system_directory_before_english", none, german, english, germanFile},
        {"no_locale_name", german, german, english, englishFile, "GetUserDefaultLocaleName"},
        {"file_that_does_not_load", german, english, none, englishFile, "LoadLibraryExW"},
        {"current_directory_unknown", none, german, none, own, "GetCurrentDirectoryW"},
        {"system_directory_unknown", none, german, none, own, "GetSystemDirectoryW"},
        {"system_directory_not_entered", none, german, none, own, "SetCurrentDirectoryW"},
    };
    for (const auto& row : rows)
    {
        if (!bSearchFindsFiles && !(row.current.empty() && row.system.empty()))
            continue;
        SCOPED_TRACE(row.name);
        Place(row.current, inCurrent);
        Place(row.system, inSystem);
        Place(row.english, inEnglish);
        if (row.szFails)
            platform::testing::PlanFault(row.szFails, 1, 1);
        {
            const CModuleUnderTest module(CModuleUnderTest::Registration::None);
            EXPECT_TRUE(!row.szFails || platform::testing::CountFaults(row.szFails) == 1);
            platform::testing::ClearFaults();
            EXPECT_EQ(before, CurrentDirectory());
            EXPECT_EQ(row.shown != own, GetModuleHandleW(OLESTR("korihvui.dll.mui")) != nullptr);
            CBstr title;
            EXPECT_EQ(S_OK, module.Create<ICCXExtUICon>(IID_ICCXExtUICon)->Dot11ExtUIPropertyGetName(title.Put()));
            EXPECT_EQ(row.shown == germanFile ? "Korvane-Verbindungseinstellungen" : "Korvane Connection Settings",
                      tests::TextOf(title));
        }
        EXPECT_EQ(nullptr, GetModuleHandleW(OLESTR("korihvui.dll.mui"))) << "still loaded";
    }
    Place(none, inSystem);
    fs::remove(inSystem); // only when nothing else is in it
}

TEST(ModuleEntry, LanguageFileByItsPlace)
{
    const tests::CTestFolder place;
    const auto program = tests::ProgramFile();
    const auto build = program.parent_path();
    for (const fs::path& file : {program.filename(), fs::path("korihvui.dll"), fs::path("libplatform.so")})
    {
        if (fs::exists(build / file))
            fs::copy_file(build / file, place.Path() / file);
    }
    fs::current_path(build);
    EXPECT_TRUE(tests::RunCase(place.Path() / program.filename(), "ModuleEntry.DISABLED_LanguageFileByItsPlace"));
}

TEST(ModuleEntry, ComIsReadyOnTheLoadingThreadUntilTheModuleIsUnloaded)
{
    std::thread(
        []
        {
            constexpr CLSID noClass = {0x5A1D0C77, 0x0B11, 0x4E0C, {0x9A, 0x11, 0x6B, 0x30, 0x52, 0x1E, 0x77, 0x04}};
            const auto activate = [&]
            {
                CComRef<IUnknown> object;
                return CoCreateInstance(noClass, nullptr, CLSCTX_INPROC_SERVER, IID_IUnknown, object.PutVoid());
            };
            EXPECT_EQ(CO_E_NOTINITIALIZED, activate());
            {
                const CModuleUnderTest module(CModuleUnderTest::Registration::None);
                EXPECT_EQ(REGDB_E_CLASSNOTREG, activate());
                EXPECT_EQ(RPC_E_CHANGED_MODE, CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) << "for many threads";
            }
            EXPECT_EQ(CO_E_NOTINITIALIZED, activate());
        })
        .join();
}
} // namespace
