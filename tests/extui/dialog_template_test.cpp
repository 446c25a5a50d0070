// The dialog and the strings in the module's resources and in its language resource files.
#include "resources/resource.h"
#include "tests/support/ModuleUnderTest.h"

#include <cstring>
#include <regex>

namespace tests
{
namespace
{
// As a person would write it down. German differs in the texts alone.
constexpr const char* english = R"(style 80c800cc, 232 x 158, 'Korvane Connection Settings', 8 MS Shell Dlg
1 BUTTON 50010001 at 121,137,50,14 'OK'
2 BUTTON 50010000 at 175,137,50,14 'Cancel'
1002 BUTTON 50010003 at 17,68,201,10 'Enable Radio Measurement'
1003 BUTTON 50010003 at 17,83,201,10 'Enable Rapido A/G'
1004 BUTTON 50010403 at 17,98,201,10 'Enable Advanced Roaming Setting'
1005 COMBOBOX 50210102 at 142,112,76,12 ''
1006 STATIC 5002000c at 28,112,108,14 'Roaming Option'
1009 BUTTON 50010003 at 31,43,177,10 'Enable 2.4 GHz Band'
1007 BUTTON 50000007 at 17,14,199,46 'Wireless Modes'
1008 BUTTON 50010003 at 31,26,177,10 'Enable 5 GHz Band'
102 'Default'
103 'Very Low'
104 'Low'
105 'Normal'
106 'High'
107 'Very High'
110 'Korvane Connection Settings'
122 'Atleast one wireless band must be selected'
)";

// An extended dialog template, read number by number: everything in it is a multiple of two bytes.
class CTemplateReader
{
public:
    CTemplateReader(const void* pBytes, std::size_t cb) : m_words(cb / sizeof(WORD))
    {
        std::memcpy(m_words.data(), pBytes, cb);
    }
    WORD Word()
    {
        return m_words.at(m_at++);
    }
    DWORD Dword()
    {
        const DWORD dwLow = Word();
        return dwLow | static_cast<DWORD>(Word()) << 16;
    }
    // A text, or a window class by its number.
    std::string Name()
    {
        std::string name;
        for (WORD w = Word(); w != 0; w = Word())
        {
            if (w == 0xFFFF)
                return "#" + std::to_string(Word());
            name += w < 0x80 ? static_cast<char>(w) : '?';
        }
        return name;
    }
    void AlignToDword()
    {
        m_at += m_at % 2;
    }
    bool IsAtEnd() const
    {
        return m_at >= m_words.size();
    }

private:
    std::vector<WORD> m_words;
    std::size_t m_at = 0;
};

// Resource compilers write the system's window classes by their numbers or by their names.
std::string KindOf(std::string name)
{
    for (char& ch : name)
        ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
    return name == "#128" ? "BUTTON" : name == "#130" ? "STATIC" : name == "#133" ? "COMBOBOX" : name;
}

std::string Describe(HMODULE hModule)
{
    const HRSRC hResource = FindResourceW(hModule, MAKEINTRESOURCEW(IDD_CONNECTION_SETTINGS), MAKEINTRESOURCEW(5));
    EXPECT_NE(nullptr, hResource);
    CTemplateReader reader(LockResource(LoadResource(hModule, hResource)), SizeofResource(hModule, hResource));
    std::ostringstream out;
    EXPECT_EQ(0xFFFF0001, reader.Dword()) << "version and signature";
    EXPECT_EQ(0u, reader.Dword()) << "help identifier";
    EXPECT_EQ(0u, reader.Dword()) << "extended style";
    out << "style " << std::hex << reader.Dword() << std::dec;
    const WORD cControls = reader.Word();
    reader.Dword(); // where it opens
    const WORD cx = reader.Word();
    out << ", " << cx << " x " << reader.Word();
    EXPECT_EQ("", reader.Name()) << "menu";
    EXPECT_EQ("", reader.Name()) << "window class";
    out << ", '" << reader.Name() << "', " << reader.Word();
    reader.Dword(); // weight, slant and character set
    out << " " << reader.Name() << "\n";
    for (WORD i = 0; i < cControls; ++i)
    {
        reader.AlignToDword();
        EXPECT_EQ(0u, reader.Dword()) << "help identifier";
        EXPECT_EQ(0u, reader.Dword()) << "extended style";
        const DWORD dwStyle = reader.Dword();
        std::string place;
        for (int n = 0; n < 4; ++n)
            place += (n == 0 ? "" : ",") + std::to_string(reader.Word());
        out << reader.Dword() << " " << KindOf(reader.Name()) << " " << std::hex << dwStyle << std::dec << " at " << place;
        out << " '" << reader.Name() << "'\n";
        EXPECT_EQ(0, reader.Word()) << "creation data";
    }
    EXPECT_TRUE(reader.IsAtEnd());
    for (const UINT uId : {102u, 103u, 104u, 105u, 106u, 107u, 110u, 122u})
    {
        WCHAR szText[256] = {};
        LoadStringW(hModule, uId, szText, 256);
        out << uId << " '" << Narrow(szText) << "'\n";
    }
    return out.str();
}

HMODULE OpenLanguage(const char* szLanguage)
{
    return LoadLibraryExW(PlatformNameOf(BuildFolder() / szLanguage / "korihvui.dll.mui").c_str(), nullptr,
                          LOAD_LIBRARY_AS_DATAFILE);
}
} // namespace

TEST(DialogTemplate, IsTheSameInTheModuleAndItsLanguageFiles)
{
    const CModuleUnderTest module(CModuleUnderTest::Registration::None);
    EXPECT_EQ(english, Describe(module.Handle()));
    const HMODULE hEnglish = OpenLanguage("en-US");
    EXPECT_EQ(english, Describe(hEnglish));
    FreeLibrary(hEnglish);

    const HMODULE hGerman = OpenLanguage("de-DE");
    const std::string german = Describe(hGerman);
    FreeLibrary(hGerman);
    const auto withoutTexts = [](const std::string& text) { return std::regex_replace(text, std::regex("'[^'\\n]+'"), "text"); };
    EXPECT_EQ(withoutTexts(english), withoutTexts(german));
    EXPECT_NE(std::string::npos, german.find("110 'Korvane-Verbindungseinstellungen'\n")) << german;
    EXPECT_EQ(std::string::npos, german.find("'Enable")) << german;
}
} // namespace tests
