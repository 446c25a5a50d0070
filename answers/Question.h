// What is asked of the platform, as the texts in agreed/ put it: a verb, then words and "texts in quotes".
#pragma once

#include "values/WideText.h"

#include <algorithm>
#include <deque>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace answers
{
// Hands out its words one after the other. The texts are our own: a word that is missing, or of another kind, is thrown.
class CQuestion
{
public:
    explicit CQuestion(std::string_view text) : m_rest(text)
    {
        SkipBlanks();
    }

    bool HasMore() const
    {
        return !m_rest.empty();
    }
    bool IsText() const
    {
        return m_rest.starts_with('"');
    }
    std::string Word();
    template <class Integer>
    Integer Number()
    {
        return static_cast<Integer>(std::stoull(Word(), nullptr, 0));
    }
    // "00FF", or "none".
    std::string Bytes();
    // What stands in quotes, where \\ is a backslash and \uXXXX any unit; null for the word null. Lives with the question.
    const WCHAR* Text();
    // The row of the table that has the word's name.
    template <class Table>
    const auto& OneOf(const Table& table)
    {
        const std::string word = Word();
        const auto found = std::ranges::find_if(table, [&](const auto& row) { return word == row.szName; });
        return found != std::end(table) ? *found : throw std::invalid_argument("unknown word " + word);
    }

private:
    void SkipBlanks();

    std::string_view m_rest;
    std::deque<CWideString> m_texts;
};

// A word for one of the platform's values.
struct NamedValue
{
    const char* szName;
    DWORD dwValue;
};
} // namespace answers
