#include "host/SafeFile.h"

#include "host/Descriptors.h"
#include "host/HostError.h"
#include "simulator/files/StagedFile.h"

#include <cerrno>
#include <cstring>
#include <sys/stat.h>

namespace
{
constexpr std::size_t cbLargestFile = 16u * 1024 * 1024;

void RequireRegular(const std::filesystem::path& file, const CUniqueDescriptor& opened)
{
    const int nError = errno;
    struct stat status = {};
    // Not every system opens one.
    if (std::error_code ignored; std::filesystem::is_directory(file, ignored))
    {
        std::error_code error;
        const std::filesystem::directory_iterator listed(file, error);
        throw CHostError(error ? "is a folder that cannot be listed: " + error.message() : "is a folder, not a file");
    }
    if (!opened)
        throw CHostError(nError == ENOENT || nError == ENOTDIR
                             ? "there is no such file"
                             : std::string("cannot be opened for reading: ") + std::strerror(nError));
    if (fstat(opened.Get(), &status) != 0 || !S_ISREG(status.st_mode))
        throw CHostError("is not a regular file");
}

std::string ReadToEnd(const CUniqueDescriptor& opened)
{
    std::string strBytes;
    char chunk[64 * 1024];
    while (const auto cbRead = read(opened.Get(), chunk, sizeof(chunk)))
    {
        if (cbRead < 0)
            throw CHostError(std::string("cannot be read to its end: ") + std::strerror(errno));
        strBytes.append(chunk, static_cast<std::size_t>(cbRead));
        if (strBytes.size() > cbLargestFile)
            throw CHostError("is larger than 16 MiB");
    }
    return strBytes;
}

// Replacing a file takes one name to the new one and leaves the others behind.
void RequireOneName(const std::filesystem::path& target)
{
    const CUniqueDescriptor opened = OpenForReading(target);
    const unsigned long nNames = opened ? NamesOf(opened) : 1;
    if (nNames > 1)
        throw CHostError("is not written: it has " + std::to_string(nNames) +
                         " names (hard links), and the others would keep the old content");
}
} // namespace

std::string ReadSafely(const std::filesystem::path& file)
{
    const CUniqueDescriptor opened = OpenForReading(file);
    RequireRegular(file, opened);
    return ReadToEnd(opened);
}

std::string ReadStandardInput()
{
    const CUniqueDescriptor opened = KeepStandardInput();
    if (!opened)
        throw CHostError("is closed");
    return ReadToEnd(opened);
}

void WriteSafely(const std::filesystem::path& target, std::string_view bytes, std::optional<std::string_view> wasRead)
{
    NamingFile(target,
               [&]
               {
                   std::error_code ignored;
                   const std::filesystem::file_status status = std::filesystem::status(target, ignored);
                   if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
                       throw CHostError("cannot be written: it is not a regular file");
                   RequireOneName(target);
                   try
                   {
                       CStagedFile staged(target, bytes);
                       // From here to the exchange the turn at the target is this writer's.
                       if (wasRead && ReadSafely(target) != *wasRead)
                           throw CHostError("another program has changed it meanwhile; nothing is written");
                       staged.Commit();
                   }
                   catch (const CFileError& error)
                   {
                       throw CHostError(std::string(error.what()) + ": " + ErrorText(error.Code()));
                   }
               });
}
