// What the component needs of the XML library: owners, and text between the platform's UTF-16 and the library's UTF-8.
#pragma once

#include <libxml/tree.h>

#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>

namespace platform::msxml3
{
template <auto free>
struct CFree
{
    template <class Made>
    void operator()(Made* pMade) const noexcept
    {
        free(pMade);
    }
};
template <class Made, auto free>
using LibraryPtr = std::unique_ptr<Made, CFree<free>>;
using DocumentPtr = LibraryPtr<xmlDoc, xmlFreeDoc>;

// What the library made; it makes nothing when memory runs out.
template <class Made>
Made& Require(Made* pMade)
{
    if (!pMade)
        throw std::bad_alloc();
    return *pMade;
}

// Nothing for a text with a lone surrogate or a zero, which the library cannot be given.
std::optional<std::string> ToLibrary(std::u16string_view text);
// A null text is an empty one.
std::u16string FromLibrary(const xmlChar* pText);

inline const xmlChar* Units(const std::string& text) noexcept
{
    return reinterpret_cast<const xmlChar*>(text.c_str());
}

// The name of an element or attribute, without a prefix; nothing for any other text.
std::optional<std::string> ToPlainName(std::u16string_view text);
} // namespace platform::msxml3
