// The dialog and the strings in the module's resources and in its language resource files.
#include "resources/resource.h"
#include "tests/support/ModuleUnderTest.h"
#include "values/Unique.h"

#include <regex>
#include <sstream>

namespace tests
{
namespace
{
// The template's numbers as they follow one another, with a line for each control: its style, its place, its identifier.
constexpr const char* english =
    R"(1,65535,0,0,0,0,204,32968,10,0,0,232,158,0,0,'Korvane Connection Settings',8,0,256,'MS Shell Dlg',
0,0,0,0,1,20481,121,137,50,14,1,0,'BUTTON','OK',0,
0,0,0,0,0,20481,175,137,50,14,2,0,'BUTTON','Cancel',0,
0,0,0,0,3,20481,17,68,201,10,1002,0,'BUTTON','Enable Radio Measurement',0,
0,0,0,0,3,20481,17,83,201,10,1003,0,'BUTTON','Enable Rapido A/G',0,
0,0,0,0,1027,20481,17,98,201,10,1004,0,'BUTTON','Enable Advanced Roaming Setting',0,
0,0,0,0,258,20513,142,112,76,12,1005,0,'COMBOBOX','',0,
0,0,0,0,12,20482,28,112,108,14,1006,0,'STATIC','Roaming Option',0,
0,0,0,0,3,20481,31,43,177,10,1009,0,'BUTTON','Enable 2.4 GHz Band',0,
0,0,0,0,7,20480,17,14,199,46,1007,0,'BUTTON','Wireless Modes',0,
0,0,0,0,3,20481,31,26,177,10,1008,0,'BUTTON','Enable 5 GHz Band',0,
102 'Default'
103 'Very Low'
104 'Low'
105 'Normal'
106 'High'
107 'Very High'
110 'Korvane Connection Settings'
122 'Atleast one wireless band must be selected'
)";

std::string Describe(HMODULE hModule)
{
    const HRSRC hResource = FindResourceW(hModule, MAKEINTRESOURCEW(IDD_CONNECTION_SETTINGS), MAKEINTRESOURCEW(5));
    const auto* const pTemplate = static_cast<const WORD*>(LockResource(LoadResource(hModule, hResource)));
    const auto* pWord = pTemplate;
    std::ostringstream out;
    const auto numbers = [&](int nCount)
    {
        while (nCount-- > 0)
            out << *pWord++ << ",";
    };
    const auto text = [&]
    {
        out << "'";
        while (const WORD w = *pWord++)
            out << (w < 0x80 ? static_cast<char>(w) : '?');
        out << "',";
    };
    numbers(15);
    text();
    numbers(3); // of the font
    text();
    while (pWord < pTemplate + SizeofResource(hModule, hResource) / sizeof(WORD))
    {
        pWord += (pWord - pTemplate) % 2; // every control begins at a multiple of four bytes
        out << "\n";
        numbers(12);
        text(); // the window class
        text();
        numbers(1);
    }
    out << "\n";
    for (const UINT uId : {102u, 103u, 104u, 105u, 106u, 107u, 110u, 122u})
    {
        WCHAR szText[256] = {};
        LoadStringW(hModule, uId, szText, 256);
        out << uId << " '" << Narrow(szText) << "'\n";
    }
    return out.str();
}

std::string DescribeLanguage(const char* szLanguage)
{
    const auto file = PlatformNameOf(BuildFolder() / szLanguage / "korihvui.dll.mui");
    const CUniqueLibrary library(LoadLibraryExW(file.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE));
    return Describe(library.Get());
}
} // namespace

TEST(DialogTemplate, IsTheSameInTheModuleAndItsLanguageFiles)
{
    EXPECT_EQ(english, Describe(CModuleUnderTest(CModuleUnderTest::Registration::None).Handle()));
    EXPECT_EQ(english, DescribeLanguage("en-US"));
    // German differs in the texts alone.
    const std::string german = DescribeLanguage("de-DE");
    const auto withoutTexts = [](const std::string& text) { return std::regex_replace(text, std::regex("'[^'\\n]+'"), "text"); };
    EXPECT_EQ(withoutTexts(english), withoutTexts(german));
    EXPECT_NE(std::string::npos, german.find("110 'Korvane-Verbindungseinstellungen'\n")) << german;
    EXPECT_EQ(std::string::npos, german.find("'Enable")) << german;
}
} // namespace tests
