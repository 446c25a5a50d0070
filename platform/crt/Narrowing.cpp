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
    for (std::size_t i = 0; i < cbText; ++i)
    {
        const WCHAR unit = szWide[i];
        // The default locale knows one byte for each of the first 256 characters and nothing for any other.
        if (unit > 0xFF)
        {
            errno = EILSEQ;
            return failure;
        }
        szText[i] = static_cast<char>(unit);
        if (unit == 0)
            return i;
    }
    return cbText;
}
