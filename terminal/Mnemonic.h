// The letter that a control's text marks with '&'.
#pragma once

#include <string>
#include <string_view>

namespace terminal
{
struct Mnemonic
{
    std::u16string text; // as shown
    int nPosition = -1;  // of the marked letter in it; -1 when none is
};

inline Mnemonic ReadMnemonic(std::u16string_view marked)
{
    Mnemonic mnemonic;
    for (std::size_t i = 0; i < marked.size(); ++i)
    {
        if (marked[i] == u'&')
        {
            if (++i == marked.size())
                break;
            if (marked[i] != u'&') // two of them show one
                mnemonic.nPosition = static_cast<int>(mnemonic.text.size());
        }
        mnemonic.text += marked[i];
    }
    return mnemonic;
}

inline bool IsSameLetter(char16_t chLeft, char16_t chRight) noexcept
{
    const auto fold = [](char16_t ch) { return ch >= u'A' && ch <= u'Z' ? ch + (u'a' - u'A') : ch + 0; };
    return fold(chLeft) == fold(chRight);
}
} // namespace terminal
