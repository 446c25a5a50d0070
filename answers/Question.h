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
    long Number();
    // "00FF", or "none".
    std::string Bytes();
    // What stands in quotes, where \\ is a backslash and \uXXXX any unit; null for the word null. Lives with the question.
    const WCHAR* Text();
    // The row of the table that has the word's name.
    template <class Row, std::size_t cRows>
    const Row& OneOf(const Row (&table)[cRows])
    {
        const std::string word = Word();
        const auto found = std::ranges::find_if(table, [&](const Row& row) { return word == row.szName; });
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

// One subject that is asked about: an empty world, made anew for each run of questions and gone without a trace.
class CSubject
{
public:
    CSubject() = default;
    virtual ~CSubject() = default;
    CSubject(const CSubject&) = delete;
    CSubject& operator=(const CSubject&) = delete;

    virtual std::string Answer(CQuestion& question) = 0;
};

template <class Subject>
struct Verb
{
    const char* szName;
    std::string (Subject::*pfnAnswer)(CQuestion&);
};

template <class Subject, std::size_t cVerbs>
std::string AnswerBy(const Verb<Subject> (&verbs)[cVerbs], Subject& subject, CQuestion& question)
{
    return (subject.*question.OneOf(verbs).pfnAnswer)(question);
}
} // namespace answers
