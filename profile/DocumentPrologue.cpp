#include "profile/DocumentPrologue.h"

#include <algorithm>

namespace
{
constexpr WCHAR byteOrderMark = 0xFEFF;
constexpr CWideView documentType = OLESTR("<!DOCTYPE");

struct Skipped
{
    CWideView opening;
    CWideView closing;
};
constexpr Skipped skippedParts[] = {
    {OLESTR("<?"), OLESTR("?>")},
    {OLESTR("<!--"), OLESTR("-->")},
};

// Takes a leading comment or processing instruction off; false when there is none, or it never ends.
bool SkipPart(CWideView& text)
{
    for (const auto& part : skippedParts)
    {
        if (!text.starts_with(part.opening))
            continue;
        const auto nEnd = text.find(part.closing, part.opening.size());
        if (nEnd == CWideView::npos)
            return false;
        text.remove_prefix(nEnd + part.closing.size());
        return true;
    }
    return false;
}
} // namespace

bool HasDocumentType(CWideView text)
{
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(1);
    do
    {
        text.remove_prefix(std::min(text.find_first_not_of(OLESTR(" \t\r\n")), text.size()));
    } while (SkipPart(text));
    return text.starts_with(documentType);
}
