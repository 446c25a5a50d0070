#include "DeclaredEncoding.h"

#include "platform/kernel32/Unicode.h"

#include <libxml/encoding.h>

#include <string>

namespace platform::msxml3
{
namespace
{
constexpr std::u16string_view declarationStart = u"<?xml";
constexpr std::u16string_view keyword = u"encoding";

// What stands within the quotes behind the keyword; "" when the declaration is of another form, which the parser judges.
std::u16string_view DeclaredName(std::u16string_view text)
{
    if (!text.starts_with(declarationStart))
        return {};
    std::u16string_view rest = text.substr(0, text.find(u"?>"));
    const auto found = rest.find(keyword);
    if (found == rest.npos)
        return {};
    rest.remove_prefix(found + keyword.size());
    const auto opening = rest.find_first_of(u"\"'");
    if (opening == rest.npos)
        return {};
    const auto closing = rest.find(rest[opening], opening + 1);
    return closing == rest.npos ? std::u16string_view() : rest.substr(opening + 1, closing - opening - 1);
}
} // namespace

bool KnowsDeclaredEncoding(std::u16string_view text)
{
    const std::u16string_view declared = DeclaredName(text);
    if (declared.empty())
        return true;
    const std::string name = ToUtf8(declared);
    xmlCharEncodingHandler* const pHandler = xmlFindCharEncodingHandler(name.c_str());
    if (!pHandler)
        return false;
    xmlCharEncCloseFunc(pHandler);
    return true;
}
} // namespace platform::msxml3
