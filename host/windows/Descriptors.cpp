#include "host/Descriptors.h"

#include "host/FileNames.h"

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

CUniqueDescriptor OpenTraceFile(const std::string& strFile)
{
    const auto file = PathOf(strFile.empty() ? "NUL" : strFile);
    return CUniqueDescriptor(_wopen(file.c_str(), _O_WRONLY | openFlags, _S_IREAD | _S_IWRITE));
}

CUniqueDescriptor OpenTemporaryTrace()
{
    const auto file = std::filesystem::temp_directory_path() / ("korihost." + std::to_string(GetCurrentProcessId()) + ".trace");
    return CUniqueDescriptor(_wopen(file.c_str(), _O_RDWR | _O_TEMPORARY | openFlags, _S_IREAD | _S_IWRITE));
}

CUniqueDescriptor OpenForReading(const std::filesystem::path& file)
{
    return CUniqueDescriptor(_wopen(file.c_str(), _O_RDONLY | _O_BINARY | _O_NOINHERIT));
}
