#include "host/ProfileFile.h"

#include "host/HostError.h"
#include "host/SafeFile.h"

CProfileFile::CProfileFile(std::filesystem::path file) : CProfileFile(file, NamingFile(file, [&] { return ReadSafely(file); }))
{
}

CProfileFile::CProfileFile(std::filesystem::path file, std::string strRead)
    : CProfile(NameOf(file), NamingFile(file, [&] { return DecodeProfile(strRead); })), m_file(std::move(file)),
      m_strRead(std::move(strRead))
{
}

void CProfileFile::Store() const
{
    WriteSafely(m_file, Bytes(), m_strRead);
}
