// The dialog and the strings in the module's resources and in its language resource files.
#include "resources/resource.h"
#include "tests/support/ModuleUnderTest.h"

#include <cctype>
#include <cstring>

namespace tests
{
namespace
{
// An extended dialog template, read byte for byte.
class CTemplateReader
{
public:
    CTemplateReader(const void* pBytes, std::size_t cb) : m_bytes(static_cast<const char*>(pBytes), cb)
    {
    }
    template <class Number>
    Number Next()
    {
        Number number = {};
        const auto bytes = m_bytes.substr(std::min(m_at, m_bytes.size()), sizeof(number));
        EXPECT_EQ(sizeof(number), bytes.size()) << "the template is cut off";
        std::memcpy(&number, bytes.data(), bytes.size());
        m_at += sizeof(number);
        return number;
    }
    // A text, or a number as "#n".
    std::string Name()
    {
        std::string name;
        for (auto w = Next<WORD>(); w != 0; w = Next<WORD>())
        {
            if (w == 0xFFFF && name.empty())
                return "#" + std::to_string(Next<WORD>());
            name += w < 0x80 ? static_cast<char>(w) : '?';
        }
        return name;
    }
    void AlignToDword()
    {
        m_at = (m_at + 3) & ~std::size_t{3};
    }
    bool IsAtEnd() const
    {
        return m_at >= m_bytes.size();
    }

private:
    std::string m_bytes;
    std::size_t m_at = 0;
};

struct Control
{
    DWORD dwId;
    std::string kind;
    DWORD dwStyle;
    short x, y, cx, cy;
    std::string text;

    bool operator==(const Control&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Control& control)
{
    return out << control.dwId << " " << control.kind << " " << std::hex << control.dwStyle << std::dec << " " << control.x << ","
               << control.y << "," << control.cx << "," << control.cy << " '" << control.text << "'";
}

struct Dialog
{
    DWORD dwStyle;
    short cx, cy;
    std::string title, font;
    WORD wPoints;
    std::vector<Control> controls;
};

// Resource compilers write the system's window classes by their numbers or by their names.
std::string KindOf(std::string name)
{
    for (char& ch : name)
        ch = static_cast<char>(std::toupper(static_cast<unsigned char>(ch)));
    return name == "#128" ? "BUTTON" : name == "#130" ? "STATIC" : name == "#133" ? "COMBOBOX" : name;
}

Dialog ReadDialog(HMODULE hModule)
{
    const HRSRC hResource = FindResourceW(hModule, MAKEINTRESOURCEW(IDD_CONNECTION_SETTINGS), MAKEINTRESOURCEW(5));
    EXPECT_NE(nullptr, hResource);
    CTemplateReader reader(LockResource(LoadResource(hModule, hResource)), SizeofResource(hModule, hResource));
    EXPECT_EQ(1, reader.Next<WORD>());
    EXPECT_EQ(0xFFFF, reader.Next<WORD>());
    EXPECT_EQ(0u, reader.Next<DWORD>()) << "help identifier";
    EXPECT_EQ(0u, reader.Next<DWORD>()) << "extended style";
    Dialog dialog = {};
    dialog.dwStyle = reader.Next<DWORD>();
    const auto cControls = reader.Next<WORD>();
    reader.Next<DWORD>(); // where it opens
    dialog.cx = reader.Next<short>();
    dialog.cy = reader.Next<short>();
    EXPECT_EQ("", reader.Name()) << "menu";
    EXPECT_EQ("", reader.Name()) << "window class";
    dialog.title = reader.Name();
    dialog.wPoints = reader.Next<WORD>();
    reader.Next<DWORD>(); // weight, slant and character set
    dialog.font = reader.Name();
    for (WORD i = 0; i < cControls; ++i)
    {
        reader.AlignToDword();
        EXPECT_EQ(0u, reader.Next<DWORD>()) << "help identifier";
        EXPECT_EQ(0u, reader.Next<DWORD>()) << "extended style";
        Control control = {};
        control.dwStyle = reader.Next<DWORD>();
        control.x = reader.Next<short>();
        control.y = reader.Next<short>();
        control.cx = reader.Next<short>();
        control.cy = reader.Next<short>();
        control.dwId = reader.Next<DWORD>();
        control.kind = KindOf(reader.Name());
        control.text = reader.Name();
        EXPECT_EQ(0, reader.Next<WORD>()) << "creation data";
        dialog.controls.push_back(control);
    }
    EXPECT_TRUE(reader.IsAtEnd());
    return dialog;
}

const std::string button = "BUTTON", comboBox = "COMBOBOX", staticText = "STATIC";
const std::vector<Control> expectedControls = {
    {1, button, 0x50010001, 121, 137, 50, 14, "OK"},
    {2, button, 0x50010000, 175, 137, 50, 14, "Cancel"},
    {1002, button, 0x50010003, 17, 68, 201, 10, "Enable Radio Measurement"},
    {1003, button, 0x50010003, 17, 83, 201, 10, "Enable Rapido A/G"},
    {1004, button, 0x50010403, 17, 98, 201, 10, "Enable Advanced Roaming Setting"},
    {1005, comboBox, 0x50210102, 142, 112, 76, 12, ""},
    {1006, staticText, 0x5002000C, 28, 112, 108, 14, "Roaming Option"},
    {1009, button, 0x50010003, 31, 43, 177, 10, "Enable 2.4 GHz Band"},
    {1007, button, 0x50000007, 17, 14, 199, 46, "Wireless Modes"},
    {1008, button, 0x50010003, 31, 26, 177, 10, "Enable 5 GHz Band"},
};

struct ResourceString
{
    UINT uId;
    const char* szText;
};
constexpr ResourceString expectedStrings[] = {
    {102, "Default"},
    {103, "Very Low"},
    {104, "Low"},
    {105, "Normal"},
    {106, "High"},
    {107, "Very High"},
    {110, "Korvane Connection Settings"},
    {122, "Atleast one wireless band must be selected"},
};

std::string StringOf(HMODULE hModule, UINT uId)
{
    WCHAR szText[256] = {};
    LoadStringW(hModule, uId, szText, 256);
    return Narrow(szText);
}

// A language resource file, opened as the module opens it.
class CLanguageFile
{
public:
    explicit CLanguageFile(const char* szLanguage)
        : m_hFile(LoadLibraryExW(PlatformNameOf(BuildFolder() / szLanguage / "korihvui.dll.mui").c_str(), nullptr,
                                 LOAD_LIBRARY_AS_DATAFILE))
    {
        EXPECT_NE(nullptr, m_hFile);
    }
    ~CLanguageFile()
    {
        FreeLibrary(m_hFile);
    }
    CLanguageFile(const CLanguageFile&) = delete;
    CLanguageFile& operator=(const CLanguageFile&) = delete;
    HMODULE Get() const
    {
        return m_hFile;
    }

private:
    HMODULE m_hFile;
};

void ExpectLayout(const Dialog& dialog)
{
    EXPECT_EQ(0x80C800CCu, dialog.dwStyle);
    EXPECT_EQ(232, dialog.cx);
    EXPECT_EQ(158, dialog.cy);
    EXPECT_EQ("MS Shell Dlg", dialog.font);
    EXPECT_EQ(8, dialog.wPoints);
}

void ExpectEnglish(HMODULE hModule)
{
    const Dialog dialog = ReadDialog(hModule);
    ExpectLayout(dialog);
    EXPECT_EQ("Korvane Connection Settings", dialog.title);
    EXPECT_EQ(expectedControls, dialog.controls);
    for (const auto& string : expectedStrings)
        EXPECT_EQ(string.szText, StringOf(hModule, string.uId)) << string.uId;
}
} // namespace

TEST(DialogTemplate, ModuleHasItInEnglish)
{
    const CModuleUnderTest module(CModuleUnderTest::Registration::None);
    ExpectEnglish(module.Handle());
}

TEST(DialogTemplate, EnglishFileHasTheSame)
{
    ExpectEnglish(CLanguageFile("en-US").Get());
}

TEST(DialogTemplate, GermanFileDiffersInTextsAlone)
{
    const CLanguageFile german("de-DE");
    Dialog dialog = ReadDialog(german.Get());
    ExpectLayout(dialog);
    EXPECT_EQ("Korvane-Verbindungseinstellungen", dialog.title);
    ASSERT_EQ(expectedControls.size(), dialog.controls.size());
    for (std::size_t i = 0; i < expectedControls.size(); ++i)
    {
        const auto& english = expectedControls[i];
        EXPECT_EQ(english.text.empty(), dialog.controls[i].text.empty()) << english.dwId;
        EXPECT_TRUE(english.dwId == IDOK || english.text.empty() || english.text != dialog.controls[i].text) << english.dwId;
        dialog.controls[i].text = english.text;
        EXPECT_EQ(english, dialog.controls[i]);
    }
    for (const auto& string : expectedStrings)
        EXPECT_NE("", StringOf(german.Get(), string.uId)) << string.uId;
    EXPECT_EQ("Korvane-Verbindungseinstellungen", StringOf(german.Get(), IDS_CONNECTION_SETTINGS));
    EXPECT_EQ("Sehr niedrig", StringOf(german.Get(), IDS_ROAMING_VERY_LOW));
}
} // namespace tests
