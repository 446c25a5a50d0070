#include "platform/crt/Errno.h"
#include "platform/testing/FaultPoint.h"

#include <windows.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cwchar>

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

// One text and its line end belong together, whatever other threads print.
class COutputLock
{
public:
    COutputLock()
    {
        flockfile(stdout);
    }
    ~COutputLock()
    {
        funlockfile(stdout);
    }
    COutputLock(const COutputLock&) = delete;
    COutputLock& operator=(const COutputLock&) = delete;
};
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
    const COutputLock lock;
    for (; *szText != 0; ++szText)
    {
        if (*szText > 0xFF)
        {
            errno = EILSEQ;
            return nFailure;
        }
        if (putc_unlocked(*szText, stdout) == EOF)
            return nFailure;
    }
    return putc_unlocked('\n', stdout) == EOF ? nFailure : 0;
}
