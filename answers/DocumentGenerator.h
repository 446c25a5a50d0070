// Profiles by chance: most well-formed and near to what hosts hold, the rest odd or broken.
#pragma once

#include "answers/DocumentShapes.h"

#include <cstdint>
#include <random>

namespace answers
{
struct Document
{
    DocumentKind kind;
    CWideString text;
};

class CDocumentGenerator
{
public:
    // The same seed gives the same documents with every compiler.
    explicit CDocumentGenerator(std::uint32_t uSeed) : m_engine(uSeed)
    {
    }

    Document Next();

private:
    // By remainder, because the library's distributions differ from one to the next.
    std::size_t Pick(std::size_t nChoices)
    {
        return m_engine() % nChoices;
    }
    bool OneIn(std::size_t nChoices)
    {
        return Pick(nChoices) == 0;
    }
    const WCHAR* PickFrom(std::span<const WCHAR* const> texts)
    {
        return texts[Pick(texts.size())];
    }

    void AppendInterlude(CWideString& text);
    // The element of the row and what is inside of it.
    void AppendElement(CWideString& text, std::span<const ShapeRow> rows);
    void AppendChildren(CWideString& text, std::span<const ShapeRow> rows);
    void AppendText(CWideString& text, std::span<const WCHAR* const> texts);
    void Break(CWideString& text);

    std::mt19937 m_engine;
};
} // namespace answers
