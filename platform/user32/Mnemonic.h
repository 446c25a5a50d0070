// The letter that a control's text marks with '&'.
#pragma once

#include <string>
#include <string_view>

namespace platform::user32
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
} // namespace platform::user32
