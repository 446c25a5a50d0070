#include "host/Descriptors.h"

#include "host/FileNames.h"
#include "host/TemporaryFile.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>

namespace
{
// Text mode, because the run-time library writes wide text to a binary stream as it is.
constexpr int openFlags = _O_CREAT | _O_TRUNC | _O_APPEND | _O_TEXT | _O_NOINHERIT;
} // namespace

CUniqueDescriptor KeepStandardOutput()
{
    CUniqueDescriptor own(_dup(_fileno(stdout)));
    if (own)
        _setmode(own.Get(), _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
    return own;
}

CUniqueDescriptor KeepStandardInput()
{
    CUniqueDescriptor own(_dup(_fileno(stdin)));
    if (own)
        _setmode(own.Get(), _O_BINARY);
    return own;
}

// The run-time library's own answer is always one.
unsigned long NamesOf(const CUniqueDescriptor& descriptor)
{
    BY_HANDLE_FILE_INFORMATION information = {};
    const auto hFile = reinterpret_cast<HANDLE>(_get_osfhandle(descriptor.Get()));
    return GetFileInformationByHandle(hFile, &information) ? information.nNumberOfLinks : 1;
}

CUniqueDescriptor OpenTraceFile(const std::string& strFile)
{
    const auto file = PathOf(strFile.empty() ? "NUL" : strFile);
    return CUniqueDescriptor(_wopen(file.c_str(), _O_WRONLY | openFlags, _S_IREAD | _S_IWRITE));
}

CUniqueDescriptor OpenTemporaryTrace()
{
    const auto file = TemporaryFile("korihost." + std::to_string(GetCurrentProcessId()) + ".trace");
    return CUniqueDescriptor(_wopen(file.c_str(), _O_RDWR | _O_TEMPORARY | openFlags, _S_IREAD | _S_IWRITE));
}

CUniqueDescriptor OpenForReading(const std::filesystem::path& file)
{
    return CUniqueDescriptor(_wopen(file.c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT));
}
