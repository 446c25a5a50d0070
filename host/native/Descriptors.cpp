#include "host/Descriptors.h"

#include "host/TemporaryFile.h"

#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>

CUniqueDescriptor KeepStandardOutput()
{
    return CUniqueDescriptor(fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

CUniqueDescriptor KeepStandardInput()
{
    return CUniqueDescriptor(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

unsigned long NamesOf(const CUniqueDescriptor& descriptor)
{
    struct stat status = {};
    return fstat(descriptor.Get(), &status) == 0 ? status.st_nlink : 1;
}

CUniqueDescriptor OpenTraceFile(const std::string& strFile)
{
    return CUniqueDescriptor(open(strFile.empty() ? "/dev/null" : strFile.c_str(),
                                  O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_NONBLOCK | O_CLOEXEC, 0666));
}

CUniqueDescriptor OpenTemporaryTrace()
{
    std::string strName = TemporaryFile("korihost.XXXXXX").string();
    CUniqueDescriptor descriptor(mkostemp(strName.data(), O_APPEND | O_CLOEXEC));
    if (descriptor)
        unlink(strName.c_str());
    return descriptor;
}

CUniqueDescriptor OpenForReading(const std::filesystem::path& file)
{
    return CUniqueDescriptor(open(file.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}
