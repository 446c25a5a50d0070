// The dialog and the strings in the module's resources and in its language files.
#include "tests/support/LanguageFile.h"
#include "tests/support/Pattern.h"

namespace tests
{
namespace
{
// The template's numbers as they follow one another, with a line for each control: its style, its place, its identifier.
constexpr const char* english =
    R"(1,65535,0,0,0,0,204,32968,10,0,0,232,158,0,0,"Korvane Connection Settings",8,0,256,MS Shell Dlg,
0,0,0,0,1,20481,121,137,50,14,1,0,BUTTON,"OK",0,
0,0,0,0,0,20481,175,137,50,14,2,0,BUTTON,"Cancel",0,
0,0,0,0,3,20481,17,68,201,10,1002,0,BUTTON,"Enable Radio Measurement",0,
0,0,0,0,3,20481,17,83,201,10,1003,0,BUTTON,"Enable Rapido A/G",0,
0,0,0,0,1027,20481,17,98,201,10,1004,0,BUTTON,"Enable Advanced Roaming Setting",0,
0,0,0,0,258,20513,142,112,76,12,1005,0,COMBOBOX,"",0,
0,0,0,0,12,20482,28,112,108,14,1006,0,STATIC,"Roaming Option",0,
0,0,0,0,3,20481,31,43,177,10,1009,0,BUTTON,"Enable 2.4 GHz Band",0,
0,0,0,0,7,20480,17,14,199,46,1007,0,BUTTON,"Wireless Modes",0,
0,0,0,0,3,20481,31,26,177,10,1008,0,BUTTON,"Enable 5 GHz Band",0,
102 "Default"
103 "Very Low"
104 "Low"
105 "Normal"
106 "High"
107 "Very High"
110 "Korvane Connection Settings"
122 "Atleast one wireless band must be selected"
)";

// Texts that change with the language stand in quotation marks, each with its line's end or comma.
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
    const auto text = [&](const char* szQuote = "\"")
    {
        CWideString strText;
        while (const WORD w = *pWord++)
            strText += static_cast<WCHAR>(w);
        out << szQuote << Utf8Of(strText) << szQuote << ",";
    };
    numbers(15);
    text();
    numbers(3); // of the font
    text("");
    while (pWord < pTemplate + SizeofResource(hModule, hResource) / sizeof(WORD))
    {
        pWord += (pWord - pTemplate) % 2; // every control begins at a multiple of four bytes
        out << "\n";
        numbers(12);
        text(""); // the window class
        text();
        numbers(1);
    }
    out << "\n";
    for (const UINT uId : {102u, 103u, 104u, 105u, 106u, 107u, 110u, 122u})
        out << uId << " \"" << Utf8Of(StringOf(hModule, uId)) << "\"\n";
    return out.str();
}

constexpr const char* quoted = "\"([^\"\n]+)\"";

std::vector<std::string> QuotedIn(const std::string& text)
{
    std::vector<std::string> texts;
    for (const Match& match : Found(text, quoted))
        texts.push_back(match[1]);
    return texts;
}
} // namespace

TEST(DialogTemplate, IsTheSameInTheModuleAndInEveryLanguage)
{
    EXPECT_EQ(english, Describe(CModuleUnderTest(CModuleUnderTest::Registration::None).Handle()));
    const auto withoutTexts = [](const std::string& text) { return Replaced(text, quoted, "text"); };
    const auto englishTexts = QuotedIn(english);
    for (const std::string& strLanguage : Languages())
    {
        SCOPED_TRACE(strLanguage);
        const auto library = LoadLanguage(strLanguage);
        const std::string strTexts = Describe(library.Get());
        if (strLanguage == "en-US")
        {
            EXPECT_EQ(english, strTexts);
            continue;
        }
        ASSERT_EQ(withoutTexts(english), withoutTexts(strTexts));
        const auto texts = QuotedIn(strTexts);
        for (std::size_t n = 0; n < texts.size(); ++n)
            EXPECT_TRUE(texts[n] != englishTexts[n] || texts[n] == "OK" || texts[n] == "Normal")
                << "still in English: " << texts[n];
        // Room that the module has for each, with the terminator.
        for (const UINT uId : {102u, 103u, 104u, 105u, 106u, 107u})
            EXPECT_LT(StringOf(library.Get(), uId).size(), 25u) << uId;
        for (const UINT uId : {110u, 122u})
            EXPECT_LT(StringOf(library.Get(), uId).size(), 256u) << uId;
    }
}
} // namespace tests
