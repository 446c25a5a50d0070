#include "platform/crt/Errno.h"
#include "platform/kernel32/Failure.h"
#include "platform/kernel32/MachineError.h"
#include "platform/kernel32/OpenFiles.h"
#include "platform/kernel32/Paths.h"
#include "platform/testing/FaultPoint.h"

#include <io.h>
#include <windows.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <optional>
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

// The modes of the standard, with "b" or "t" in any place after the letter; text and binary are the same here.
std::optional<StreamMode> ReadMode(const WCHAR* szMode)
{
    std::u16string mode(szMode ? szMode : u"");
    if (!mode.empty())
        mode.erase(std::remove_if(mode.begin() + 1, mode.end(), [](WCHAR unit) { return unit == u'b' || unit == u't'; }),
                   mode.end());
    constexpr DWORD dwShareMode = FILE_SHARE_READ | FILE_SHARE_WRITE;
    constexpr DWORD dwBoth = GENERIC_READ | GENERIC_WRITE;
    static constexpr struct
    {
        std::u16string_view mode;
        DWORD dwAccess;
        DWORD dwDisposition;
        const char* szMode;
    } modes[] = {
        {u"r", GENERIC_READ, OPEN_EXISTING, "r"},  {u"r+", dwBoth, OPEN_EXISTING, "r+"},
        {u"w", GENERIC_WRITE, CREATE_ALWAYS, "w"}, {u"w+", dwBoth, CREATE_ALWAYS, "w+"},
        {u"a", GENERIC_WRITE, OPEN_ALWAYS, "a"},   {u"a+", dwBoth, OPEN_ALWAYS, "a+"},
    };
    const auto found = std::ranges::find(modes, mode, [](const auto& row) { return row.mode; });
    if (found == std::end(modes))
        return std::nullopt;
    return StreamMode{{found->dwAccess, dwShareMode, found->dwDisposition}, found->szMode};
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

int _waccess(const WCHAR* szPath, int nMode)
{
    constexpr int nWrite = 2;
    constexpr int nRead = 4;
    const auto fail = [](DWORD dwError)
    {
        SetRuntimeError(dwError);
        return -1;
    };
    if (testing::FaultFires("_waccess"))
        return fail(testing::FaultCode("_waccess", ERROR_ACCESS_DENIED));
    if ((nMode & ~(nWrite | nRead)) != 0)
        return fail(ERROR_INVALID_PARAMETER);
    const DWORD dwAttributes = GetFileAttributesW(szPath);
    if (dwAttributes == INVALID_FILE_ATTRIBUTES)
        return fail(GetLastError());
    // The attribute alone decides, and on a folder it does not forbid writing.
    const bool bReadOnly = (dwAttributes & FILE_ATTRIBUTE_READONLY) != 0;
    return bReadOnly && (nMode & nWrite) != 0 ? fail(ERROR_ACCESS_DENIED) : 0;
}
