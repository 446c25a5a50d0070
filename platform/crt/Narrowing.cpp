#include "platform/crt/Errno.h"
#include "platform/testing/FaultPoint.h"

#include <windows.h>

#include <cerrno>

using namespace platform;

std::size_t wcstombs(char* szText, const WCHAR* szWide, std::size_t cbText)
{
    constexpr auto failure = static_cast<std::size_t>(-1);
    if (testing::FaultFires("wcstombs"))
    {
        SetRuntimeError(testing::FaultCode("wcstombs", ERROR_NO_UNICODE_TRANSLATION));
        return failure;
    }
    // The default locale knows one byte for each of the first 256 characters and nothing for any other.
    const auto isText = [](WCHAR unit) { return unit != 0 && unit <= 0xFF; };
    std::size_t cb = 0;
    for (; cb < cbText && isText(szWide[cb]); ++cb)
        szText[cb] = static_cast<char>(szWide[cb]);
    if (cb == cbText)
        return cb;
    if (szWide[cb] != 0)
    {
        errno = EILSEQ;
        return failure;
    }
    szText[cb] = 0;
    return cb;
}
