#include "platform/user32/Template.h"

#include <string_view>

namespace platform::user32
{
namespace
{
struct BadTemplate
{
};

// Takes values off the bytes' front; throws BadTemplate where they end.
class CTemplateReader
{
public:
    explicit CTemplateReader(std::span<const std::uint8_t> bytes) : m_bytes(bytes)
    {
    }

    WORD Word()
    {
        const auto* pBytes = Take(2);
        return static_cast<WORD>(pBytes[0] | pBytes[1] << 8);
    }

    DWORD Dword()
    {
        const DWORD dwLow = Word();
        return dwLow | static_cast<DWORD>(Word()) << 16;
    }

    std::u16string String()
    {
        std::u16string text;
        while (const WORD wUnit = Word())
            text += static_cast<WCHAR>(wUnit);
        return text;
    }

    DialogUnits Place()
    {
        DialogUnits place;
        for (int* pnValue : {&place.x, &place.y, &place.cx, &place.cy})
            *pnValue = static_cast<SHORT>(Word());
        return place;
    }

    // What must be there and cannot be anything else here.
    void Expect(WORD wValue)
    {
        if (Word() != wValue)
            throw BadTemplate{};
    }

    void Skip(std::size_t cb)
    {
        Take(cb);
    }

    void AlignToDword()
    {
        Take((4 - m_uPosition % 4) % 4);
    }

private:
    const std::uint8_t* Take(std::size_t cb)
    {
        if (m_bytes.size() - m_uPosition < cb)
            throw BadTemplate{};
        const auto* pBytes = m_bytes.data() + m_uPosition;
        m_uPosition += cb;
        return pBytes;
    }

    std::span<const std::uint8_t> m_bytes;
    std::size_t m_uPosition = 0;
};

// A class is named by its number, behind a mark, or by its name in the resource compiler's capitals.
struct ClassName
{
    WORD wNumber;
    std::u16string_view name;
    WindowClass windowClass;
};
constexpr WCHAR numberFollows = 0xFFFF;
constexpr ClassName classNames[] = {
    {0x80, u"BUTTON", WindowClass::Button},
    {0x82, u"STATIC", WindowClass::Static},
    {0x83, u"LISTBOX", WindowClass::ListBox},
    {0x85, u"COMBOBOX", WindowClass::ComboBox},
};

WindowClass ReadClass(CTemplateReader& reader)
{
    const WORD wFirst = reader.Word();
    const WORD wNumber = wFirst == numberFollows ? reader.Word() : WORD();
    const std::u16string name = wNumber ? u"" : static_cast<WCHAR>(wFirst) + reader.String();
    for (const auto& row : classNames)
        if (row.wNumber == wNumber || row.name == name)
            return row.windowClass;
    throw BadTemplate{};
}

ControlTemplate ReadControl(CTemplateReader& reader)
{
    ControlTemplate control;
    reader.AlignToDword();
    reader.Skip(8); // help number, extended style
    control.dwStyle = reader.Dword();
    control.place = reader.Place();
    control.nId = static_cast<int>(reader.Dword());
    control.windowClass = ReadClass(reader);
    control.text = reader.String();
    reader.Expect(0); // creation data
    return control;
}
} // namespace

std::optional<DialogTemplate> ReadDialogTemplate(std::span<const std::uint8_t> bytes)
try
{
    CTemplateReader reader(bytes);
    reader.Expect(1); // the version, and the mark that no style of the plain form has
    reader.Expect(0xFFFF);
    reader.Skip(8); // help number, extended style
    DialogTemplate dialog;
    dialog.dwStyle = reader.Dword();
    const WORD cControls = reader.Word();
    dialog.place = reader.Place();
    reader.Expect(0); // a menu
    reader.Expect(0); // a class
    dialog.title = reader.String();
    if (dialog.dwStyle & DS_SETFONT)
    {
        reader.Skip(6); // size; weight, slant and character set
        reader.String();
    }
    for (WORD i = 0; i < cControls; ++i)
        dialog.controls.push_back(ReadControl(reader));
    return dialog;
}
catch (const BadTemplate&)
{
    return std::nullopt;
}
} // namespace platform::user32
