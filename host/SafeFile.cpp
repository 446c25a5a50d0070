#include "host/SafeFile.h"

#include "host/HostError.h"
#include "simulator/files/StagedFile.h"

void WriteSafely(const std::filesystem::path& target, std::string_view bytes)
{
    NamingFile(target,
               [&]
               {
                   std::error_code ignored;
                   const std::filesystem::file_status status = std::filesystem::status(target, ignored);
                   if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
                       throw CHostError("cannot be written: it is not a regular file");
                   try
                   {
                       CStagedFile(target, bytes).Commit();
                   }
                   catch (const CFileError& error)
                   {
                       throw CHostError(std::string(error.what()) + ": " + ErrorText(error.Code()));
                   }
               });
}
