#include "host/ProfileFile.h"

#include "host/HostError.h"
#include "host/SafeFile.h"

#include <fstream>
#include <iterator>

namespace
{
constexpr std::uintmax_t maxFileSize = 16u * 1024 * 1024;

std::string ReadBytes(const std::filesystem::path& file)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(file, error);
    if (!std::filesystem::exists(status))
        throw CHostError("there is no such file");
    if (!std::filesystem::is_regular_file(status))
        throw CHostError(std::filesystem::is_directory(status) ? "is a folder, not a file" : "is not a regular file");
    const std::uintmax_t cbFile = std::filesystem::file_size(file, error);
    if (error)
        throw CHostError("cannot be read");
    if (cbFile > maxFileSize)
        throw CHostError("is larger than 16 MiB");

    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw CHostError("cannot be opened for reading");
    std::string strBytes(static_cast<std::size_t>(cbFile), '\0');
    stream.read(strBytes.data(), static_cast<std::streamsize>(strBytes.size()));
    if (stream.bad() || static_cast<std::size_t>(stream.gcount()) != strBytes.size())
        throw CHostError("cannot be read to its end");
    return strBytes;
}
} // namespace

CProfileFile::CProfileFile(std::filesystem::path file)
    : CProfile(NameOf(file), NamingFile(file, [&] { return DecodeProfile(ReadBytes(file)); })), m_file(std::move(file))
{
}

void CProfileFile::Store() const
{
    WriteSafely(m_file, Bytes());
}
