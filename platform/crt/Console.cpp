#include "platform/crt/Errno.h"
#include "platform/testing/FaultPoint.h"

#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cwchar>
#include <string>
#include <string_view>

namespace platform
{
namespace
{
// The platform knows no signal for an output that nobody reads any more: such a write fails, and the process goes on.
// A program that has chosen its own answer to the signal keeps it.
[[maybe_unused]] const bool g_bBrokenPipesFail = []
{
    struct sigaction current = {};
    if (sigaction(SIGPIPE, nullptr, &current) != 0 || current.sa_handler != SIG_DFL)
        return false;
    current.sa_handler = SIG_IGN;
    return sigaction(SIGPIPE, &current, nullptr) == 0;
}();
} // namespace
} // namespace platform

using namespace platform;

int _putws(const WCHAR* szText)
{
    constexpr int nFailure = static_cast<int>(WEOF);
    if (testing::FaultFires("_putws"))
    {
        SetRuntimeError(testing::FaultCode("_putws", ERROR_WRITE_FAULT));
        return nFailure;
    }
    // Written in one piece: the stream's own lock then keeps the lines of several threads apart. A unit that the locale cannot
    // represent ends it, without a line end.
    const std::u16string_view wide(szText);
    const auto end = std::ranges::find_if(wide, [](WCHAR unit) { return unit > 0xFF; });
    const bool bConverted = end == wide.end();
    std::string text(static_cast<std::size_t>(end - wide.begin()) + (bConverted ? 1 : 0), '\n');
    std::transform(wide.begin(), end, text.begin(), [](WCHAR unit) { return static_cast<char>(unit); });
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size())
        return nFailure;
    if (!bConverted)
        errno = EILSEQ;
    return bConverted ? 0 : nFailure;
}
