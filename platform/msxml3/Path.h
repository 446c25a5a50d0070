// The paths of element names that documents are searched with.
#pragma once

#include "Tree.h"

#include <optional>

namespace platform::msxml3
{
// "//A/B" (anywhere in the document), "/A/B" (from the document), "a/b" (from a node). Names match element names as
// written, whatever namespace is in force.
class CPath
{
public:
    // Nothing for every query outside these forms.
    static std::optional<CPath> Parse(std::u16string_view query);

    // The next match in document order after pLast, or the first when that is null; null at the end.
    Node* Next(CTree& tree, Node& context, const Node* pLast) const noexcept;

private:
    enum class Start
    {
        Anywhere,
        Document,
        Context,
    };

    bool Matches(const Node& node, const Node& top) const noexcept;

    Start m_start = Start::Context;
    std::vector<std::u16string> m_steps;
};
} // namespace platform::msxml3
