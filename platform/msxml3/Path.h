// The paths of element names that documents are searched with.
#pragma once

#include "Library.h"

#include <vector>

namespace platform::msxml3
{
// "//A/B" (anywhere in the document), "/A/B" (from the document), "a/b" (from a node). A name stands for elements without
// prefix, whatever namespace is in force.
class CPath
{
public:
    // Nothing for every query outside these forms.
    static std::optional<CPath> Parse(std::u16string_view query);

    // The first match in document order; null for none.
    xmlNode* FindFrom(xmlNode& node) const noexcept;

private:
    bool Matches(const xmlNode* pNode, const xmlNode* pTop) const noexcept;

    bool m_bFromNode;
    bool m_bAnywhere;
    std::vector<std::string> m_steps;
};
} // namespace platform::msxml3
