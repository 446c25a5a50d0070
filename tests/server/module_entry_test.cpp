// What happens when a host loads and unloads the module: its language resources and COM. (Its log has tests of its own.)
#include "tests/support/ModuleUnderTest.h"
#include "tests/support/TestProgram.h"

#include <cstdio>
#include <map>
#include <optional>
#include <thread>

namespace
{
namespace fs = std::filesystem;
using tests::CModuleUnderTest;

constexpr auto english = "Korvane Connection Settings";
constexpr auto german = "Korvane-Verbindungseinstellungen";

CWideString CurrentDirectory()
{
    WCHAR szCurrent[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, szCurrent);
    return szCurrent;
}

// Another current directory for one scope.
class CCurrentDirectory
{
public:
    explicit CCurrentDirectory(const CWideString& directory) : m_before(CurrentDirectory())
    {
        EXPECT_TRUE(SetCurrentDirectoryW(directory.c_str()));
    }
    ~CCurrentDirectory()
    {
        SetCurrentDirectoryW(m_before.c_str());
    }
    CCurrentDirectory(const CCurrentDirectory&) = delete;
    CCurrentDirectory& operator=(const CCurrentDirectory&) = delete;

private:
    CWideString m_before;
};

// One of the build's language files, put below a folder for one scope.
class CLanguageFile
{
public:
    CLanguageFile(const fs::path& source, const fs::path& folder, const std::string& language) : m_folder(folder / language)
    {
        fs::create_directories(m_folder);
        fs::copy_file(source, m_folder / "korihvui.dll.mui", fs::copy_options::overwrite_existing);
    }
    ~CLanguageFile()
    {
        std::error_code ignored;
        fs::remove(m_folder / "korihvui.dll.mui", ignored);
        fs::remove(m_folder, ignored); // only when nothing else is in it
    }
    CLanguageFile(const CLanguageFile&) = delete;
    CLanguageFile& operator=(const CLanguageFile&) = delete;

private:
    fs::path m_folder;
};

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
    WCHAR szSystem[MAX_PATH + 1] = {};
    ASSERT_NE(0u, GetSystemDirectoryW(szSystem, MAX_PATH + 1));
    fs::path systemFolder;
    {
        const CCurrentDirectory there(szSystem);
        systemFolder = fs::current_path();
    }
    const auto build = fs::current_path();
    const std::map<std::string, fs::path> sources = {{english, build / "en-US" / "korihvui.dll.mui"},
                                                     {german, build / "de-DE" / "korihvui.dll.mui"}};
    const struct
    {
        const char* name;
        const char* szCurrent; // what lies in the user's language in the current directory, null for nothing
        const char* szSystem;  // and in the system directory
        const char* szEnglish; // as the English file beside the program
        const char* szTitle;
        bool bFromFile;
    } rows[] = {
        {"no_file", nullptr, nullptr, nullptr, english, false},
        {"english_file", nullptr, nullptr, english, english, true},
        {"english_file_is_not_looked_into", nullptr, nullptr, german, german, true},
        {"current_directory", german, nullptr, nullptr, german, true},
        {"current_directory_first", german, english, english, german, true},
        {"system_directory", nullptr, german, nullptr, german, true},
        {"system_directory_before_english", nullptr, german, english, german, true},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(row.name);
        const tests::CTestFolder folder;
        const CCurrentDirectory current(folder.PlatformName());
        std::optional<CLanguageFile> inCurrent, inSystem, inEnglish;
        if (row.szCurrent || row.szSystem)
        {
            const CLanguageFile probe(sources.at(english), folder.Path(), language);
            if (!SearchFindsFiles(szLocale))
            {
                std::puts("left out: this platform's search for language files finds none");
                continue;
            }
        }
        if (row.szCurrent)
            inCurrent.emplace(sources.at(row.szCurrent), folder.Path(), language);
        if (row.szSystem)
            inSystem.emplace(sources.at(row.szSystem), systemFolder, language);
        if (row.szEnglish)
            inEnglish.emplace(sources.at(row.szEnglish), tests::ProgramFile().parent_path(), "en-US");
        const auto before = CurrentDirectory();
        {
            const CModuleUnderTest module(CModuleUnderTest::Registration::None);
            EXPECT_EQ(before, CurrentDirectory());
            EXPECT_EQ(row.bFromFile, GetModuleHandleW(OLESTR("korihvui.dll.mui")) != nullptr);
            CBstr title;
            EXPECT_EQ(S_OK, module.Create<ICCXExtUICon>(IID_ICCXExtUICon)->Dot11ExtUIPropertyGetName(title.Put()));
            EXPECT_EQ(row.szTitle, tests::TextOf(title));
        }
        EXPECT_EQ(nullptr, GetModuleHandleW(OLESTR("korihvui.dll.mui"))) << "still loaded";
    }
}

TEST(ModuleEntry, LanguageFileByItsPlace)
{
    const tests::CTestFolder place;
    const auto program = tests::ProgramFile();
    const auto build = program.parent_path();
    for (const fs::path& file :
         {program.filename(), fs::path("korihvui.dll"), fs::path("wlanapi.dll"), fs::path("libplatform.so")})
    {
        if (fs::exists(build / file))
            fs::copy_file(build / file, place.Path() / file);
    }
    const CCurrentDirectory there(tests::PlatformNameOf(build));
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
            }
            EXPECT_EQ(CO_E_NOTINITIALIZED, activate());
        })
        .join();
}
} // namespace
