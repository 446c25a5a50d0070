#include "answers/Question.h"

namespace answers
{
void CQuestion::SkipBlanks()
{
    m_rest.remove_prefix(std::min(m_rest.find_first_not_of(' '), m_rest.size()));
}

std::string CQuestion::Word()
{
    const std::string word(m_rest.substr(0, m_rest.find(' ')));
    if (word.empty() || IsText())
        throw std::invalid_argument("a word is missing");
    m_rest.remove_prefix(word.size());
    SkipBlanks();
    return word;
}

std::string CQuestion::Bytes()
{
    const std::string digits = Word();
    std::string bytes;
    for (std::size_t i = 0; digits != "none" && i < digits.size(); i += 2)
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    return bytes;
}

const WCHAR* CQuestion::Text()
{
    if (!IsText())
        return Word() == "null" ? nullptr : throw std::invalid_argument("a text is missing");
    CWideString& text = m_texts.emplace_back();
    m_rest.remove_prefix(1);
    for (; !m_rest.starts_with('"'); m_rest.remove_prefix(1))
    {
        const bool bIsUnit = m_rest.starts_with("\\u");
        if (bIsUnit)
            text += static_cast<WCHAR>(std::stoi(std::string(m_rest.substr(2, 4)), nullptr, 16));
        m_rest.remove_prefix(bIsUnit ? 5 : m_rest.starts_with('\\') ? 1 : 0);
        if (m_rest.empty())
            throw std::invalid_argument("a text does not end");
        if (!bIsUnit)
            text += static_cast<WCHAR>(m_rest.front());
    }
    m_rest.remove_prefix(1);
    SkipBlanks();
    return text.c_str();
}
} // namespace answers
