// The elements that profiles are generated from.
#pragma once

#include "values/WideText.h"

#include <span>

namespace answers
{
// One element in the order of the document; uDepth 0 is the root. The texts are what it may hold, none for an element
// that only holds others.
struct ShapeRow
{
    unsigned uDepth;
    const WCHAR* szName;
    std::span<const WCHAR* const> texts = {};
};

enum class DocumentKind
{
    Security,
    Connection,
    Wireless,
};

std::span<const ShapeRow> ShapeOf(DocumentKind kind);

// What an element may be called by mistake.
std::span<const WCHAR* const> WrongNames();
// What may stand before, between and behind elements.
std::span<const WCHAR* const> Interludes();
// What may stand inside of a start tag.
std::span<const WCHAR* const> Attributes();
// What a text may be wrapped or mixed with.
std::span<const WCHAR* const> TextMixtures();
// What may stand before the root.
std::span<const WCHAR* const> Prologues();
// What breaks a document, or nearly does, wherever it lands.
std::span<const WCHAR* const> Splinters();
} // namespace answers
