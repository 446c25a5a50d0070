// Profiles by chance, most well-formed and near to what hosts hold, the rest odd or broken, and what the module makes of them.
#pragma once

#include "values/WideText.h"

#include <cstdint>
#include <filesystem>
#include <map>
#include <ostream>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace answers
{
using Texts = std::vector<CWideString>;

// One element in the order of the document; uDepth 0 is the root. The texts are what it may hold, null for an element that
// only holds others.
struct ShapeRow
{
    std::size_t uDepth;
    CWideString name;
    const Texts* pTexts;
};

struct DocumentShapes
{
    std::map<std::string, Texts> lists;
    std::map<std::string, std::vector<ShapeRow>> documents;
};
DocumentShapes ReadDocumentShapes(const std::filesystem::path& file);

struct Document
{
    std::string kind; // one of the shapes
    CWideString text;
};

class CDocumentGenerator
{
public:
    // The same seed gives the same documents with every compiler.
    CDocumentGenerator(const DocumentShapes& shapes, std::uint32_t uSeed) : m_shapes(shapes), m_engine(uSeed)
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
    const CWideString& PickFrom(const Texts& texts)
    {
        return texts[Pick(texts.size())];
    }
    const CWideString& PickFrom(const char* szList)
    {
        return PickFrom(m_shapes.lists.at(szList));
    }

    // The element of the first row and what is inside of it.
    void AppendElement(CWideString& text, std::span<const ShapeRow> rows);
    void AppendChildren(CWideString& text, std::span<const ShapeRow> rows);
    void Break(CWideString& text);

    const DocumentShapes& m_shapes;
    std::mt19937 m_engine;
};

// How the module and its readers take nCount profiles.
void RecordDocuments(std::ostream& record, const DocumentShapes& shapes, std::uint32_t uSeed, unsigned nCount);
} // namespace answers
