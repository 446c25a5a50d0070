// Strings with their length, in bytes, in the 32 bits before the text. Nothing is cached: every string is an
// allocation of its own, so that a misuse shows at once under a memory checker.
#include <oleauto.h>

#include "platform/testing/Accounts.h"
#include "platform/testing/FaultPoint.h"

#include <cstdlib>
#include <cstring>
#include <string>

using platform::testing::Account;
using platform::testing::ChangeAccount;
using platform::testing::FaultFires;

namespace
{
// The length stands in the last 32 bits of the prefix; the rest keeps the text aligned as an allocation is.
constexpr std::size_t cbPrefix = alignof(std::max_align_t);
constexpr std::size_t cbLength = sizeof(std::uint32_t);
constexpr std::size_t cbLongest = UINT32_MAX - cbPrefix - sizeof(OLECHAR);

char* BlockOf(BSTR bstr)
{
    return reinterpret_cast<char*>(bstr) - cbPrefix;
}

BSTR Allocate(const OLECHAR* pText, std::size_t cch) noexcept
{
    if (cch > cbLongest / sizeof(OLECHAR))
        return nullptr;
    const std::size_t cb = cch * sizeof(OLECHAR);
    char* const pBlock = static_cast<char*>(pText ? std::malloc(cbPrefix + cb + sizeof(OLECHAR))
                                                  : std::calloc(1, cbPrefix + cb + sizeof(OLECHAR)));
    if (!pBlock)
        return nullptr;
    const auto cbStored = static_cast<std::uint32_t>(cb);
    std::memcpy(pBlock + cbPrefix - cbLength, &cbStored, cbLength);
    const BSTR bstr = reinterpret_cast<BSTR>(pBlock + cbPrefix);
    if (pText)
        std::memcpy(bstr, pText, cb);
    bstr[cch] = u'\0';
    ChangeAccount(Account::Bstr, 1);
    return bstr;
}
} // namespace

BSTR WINAPI SysAllocString(const OLECHAR* szText)
{
    if (FaultFires("SysAllocString") || !szText)
        return nullptr;
    return Allocate(szText, std::char_traits<OLECHAR>::length(szText));
}

BSTR WINAPI SysAllocStringLen(const OLECHAR* pText, UINT cch)
{
    if (FaultFires("SysAllocStringLen"))
        return nullptr;
    return Allocate(pText, cch);
}

UINT WINAPI SysStringLen(BSTR bstr)
{
    if (FaultFires("SysStringLen") || !bstr)
        return 0;
    std::uint32_t cb;
    std::memcpy(&cb, BlockOf(bstr) + cbPrefix - cbLength, cbLength);
    return cb / static_cast<UINT>(sizeof(OLECHAR));
}

void WINAPI SysFreeString(BSTR bstr)
{
    FaultFires("SysFreeString"); // has no way to fail; the call is counted
    if (!bstr)
        return;
    ChangeAccount(Account::Bstr, -1);
    std::free(BlockOf(bstr));
}
