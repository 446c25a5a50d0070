#include "host/ProfileFile.h"

#include "host/HostError.h"
#include "host/SafeFile.h"

namespace
{
constexpr const char* inputTitle = "standard input";
}

CProfileFile::CProfileFile(std::filesystem::path file)
    : CProfileFile(NameOf(file), file, NamingFile(file, [&] { return ReadSafely(file); }))
{
}

CProfileFile CProfileFile::OfStandardInput()
{
    return CProfileFile(inputTitle, {}, Naming(inputTitle, [] { return ReadStandardInput(); }));
}

CProfileFile::CProfileFile(std::string strTitle, std::filesystem::path file, std::string strRead)
    : CProfile(strTitle, Naming(strTitle, [&] { return DecodeProfile(strRead); })), m_file(std::move(file)),
      m_strRead(std::move(strRead))
{
}

void CProfileFile::Store() const
{
    if (m_file.empty())
        throw CHostError(Title() + ": cannot be changed in place");
    WriteSafely(m_file, Bytes(), m_strRead);
}
