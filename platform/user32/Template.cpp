#include "platform/user32/Template.h"

#include "platform/user32/TextOrder.h"

#include <algorithm>
#include <variant>

namespace platform::user32
{
namespace
{
struct BadTemplate
{
    DWORD dwError;
};

// Nothing, a number or a string: how templates name menus, classes and texts.
using Name = std::variant<std::monostate, WORD, std::u16string>;

constexpr WORD endOfName = 0;
constexpr WORD numberFollows = 0xFFFF;

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

    int Short()
    {
        return static_cast<SHORT>(Word());
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

    Name NameOrNumber()
    {
        const auto start = m_uPosition;
        const WORD wFirst = Word();
        if (wFirst == endOfName)
            return {};
        if (wFirst == numberFollows)
            return Word();
        m_uPosition = start;
        return String();
    }

    DialogUnits Place()
    {
        DialogUnits place;
        place.x = Short();
        place.y = Short();
        place.cx = Short();
        place.cy = Short();
        return place;
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
            throw BadTemplate{ERROR_RESOURCE_DATA_NOT_FOUND};
        const auto* pBytes = m_bytes.data() + m_uPosition;
        m_uPosition += cb;
        return pBytes;
    }

    std::span<const std::uint8_t> m_bytes;
    std::size_t m_uPosition = 0;
};

WindowClass ControlClass(const Name& name)
{
    for (const auto& row : classNames)
    {
        if (const auto* pAtom = std::get_if<WORD>(&name); pAtom && row.wAtom != 0 && *pAtom == row.wAtom)
            return row.windowClass;
        if (const auto* pText = std::get_if<std::u16string>(&name); pText && row.wAtom != 0 && CompareText(*pText, row.name) == 0)
            return row.windowClass;
    }
    throw BadTemplate{ERROR_CANNOT_FIND_WND_CLASS};
}

ControlTemplate ReadControl(CTemplateReader& reader, bool bExtended)
{
    ControlTemplate control;
    reader.AlignToDword();
    if (bExtended)
    {
        reader.Dword(); // help id
        reader.Dword(); // extended style
        control.dwStyle = reader.Dword();
    }
    else
    {
        control.dwStyle = reader.Dword();
        reader.Dword(); // extended style
    }
    control.place = reader.Place();
    control.nId = bExtended ? static_cast<int>(reader.Dword()) : reader.Word();
    control.windowClass = ControlClass(reader.NameOrNumber());
    const Name text = reader.NameOrNumber();
    if (const auto* pText = std::get_if<std::u16string>(&text))
        control.text = *pText;
    else if (const auto* pNumber = std::get_if<WORD>(&text))
        control.wIcon = *pNumber;
    reader.Skip(reader.Word()); // creation data: no class here takes any
    return control;
}
} // namespace

DWORD ReadDialogTemplate(std::span<const std::uint8_t> bytes, DialogTemplate& dialog)
try
{
    CTemplateReader reader(bytes);
    dialog = {};
    const DWORD dwFirst = reader.Dword();
    const bool bExtended = dwFirst == 0xFFFF0001u; // version 1 and the mark that no style has
    if (bExtended)
        reader.Dword(); // help id
    else
        dialog.dwStyle = dwFirst;
    reader.Dword(); // extended style
    if (bExtended)
        dialog.dwStyle = reader.Dword();
    const WORD cControls = reader.Word();
    dialog.place = reader.Place();
    if (!std::holds_alternative<std::monostate>(reader.NameOrNumber()))
        return ERROR_NOT_SUPPORTED; // a menu
    if (!std::holds_alternative<std::monostate>(reader.NameOrNumber()))
        return ERROR_CANNOT_FIND_WND_CLASS; // a class of its own
    dialog.title = reader.String();
    if (dialog.dwStyle & DS_SETFONT)
    {
        reader.Skip(bExtended ? 6 : 2); // size; weight, slant and character set
        reader.String();
    }
    for (WORD i = 0; i < cControls; ++i)
        dialog.controls.push_back(ReadControl(reader, bExtended));
    return ERROR_SUCCESS;
}
catch (const BadTemplate& bad)
{
    return bad.dwError;
}
} // namespace platform::user32
