#include "platform/crt/Errno.h"
#include "platform/kernel32/Failure.h"
#include "platform/kernel32/MachineError.h"
#include "platform/kernel32/OpenFiles.h"
#include "platform/kernel32/Paths.h"
#include "platform/testing/FaultPoint.h"

#include <io.h>
#include <windows.h>

#include <cerrno>
#include <new>
#include <string_view>

namespace platform
{
namespace
{
struct StreamMode
{
    OpenRequest request;
    const char* szMode;
};

// The one mode in use; a log is begun with it.
constexpr StreamMode writing = {{GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, CREATE_ALWAYS}, "w+"};

const StreamMode* ReadMode(const WCHAR* szMode)
{
    return szMode && std::u16string_view(szMode) == u"w+" ? &writing : nullptr;
}

std::FILE* Fail(DWORD dwError)
{
    SetRuntimeError(dwError);
    return nullptr;
}

std::FILE* OpenStream(const WCHAR* szFileName, const WCHAR* szMode)
{
    const auto mode = ReadMode(szMode);
    if (!mode)
        return Fail(ERROR_INVALID_PARAMETER);
    CDescriptor descriptor = OpenRealFile(RealPath(szFileName), mode->request);
    std::FILE* const pStream = fdopen(descriptor.Get(), mode->szMode);
    if (!pStream)
        return Fail(ErrorFromErrno(errno));
    descriptor.Detach();
    SetLastError(ERROR_SUCCESS);
    return pStream;
}
} // namespace
} // namespace platform

using namespace platform;

std::FILE* _wfopen(const WCHAR* szFileName, const WCHAR* szMode)
{
    if (testing::FaultFires("_wfopen"))
        return Fail(testing::FaultCode("_wfopen", ERROR_ACCESS_DENIED));
    try
    {
        return OpenStream(szFileName, szMode);
    }
    catch (const Failure& failure)
    {
        return Fail(failure.dwError);
    }
    catch (const std::bad_alloc&)
    {
        return Fail(ERROR_NOT_ENOUGH_MEMORY);
    }
}

// Whether the path exists: the one question in use.
int _waccess(const WCHAR* szPath, int nMode)
{
    const auto fail = [](DWORD dwError)
    {
        SetRuntimeError(dwError);
        return -1;
    };
    if (testing::FaultFires("_waccess"))
        return fail(testing::FaultCode("_waccess", ERROR_ACCESS_DENIED));
    if (nMode != 0)
        return fail(ERROR_INVALID_PARAMETER);
    return GetFileAttributesW(szPath) == INVALID_FILE_ATTRIBUTES ? fail(GetLastError()) : 0;
}
