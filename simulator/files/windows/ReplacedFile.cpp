#include "simulator/files/ReplacedFile.h"

#include <functional>
#include <vector>

// A mutex and no lock: the platform replaces no file that somebody, be it this writer, has open.
struct CReplacedFile::State
{
    std::filesystem::path file;
    CUniqueMutex turn;

    State(std::filesystem::path name, CUniqueMutex taken) : file(std::move(name)), turn(std::move(taken))
    {
    }
    ~State()
    {
        ReleaseMutex(turn.Get());
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;
};

namespace
{
// A file has one name here however its letters are written.
std::wstring TurnAt(std::wstring strFile)
{
    CharLowerW(strFile.data());
    return L"Global\\replaced-" + std::to_wstring(std::hash<std::wstring>()(strFile));
}

// Empty where there are none to be kept: not every file system has them.
std::vector<BYTE> RightsOf(const std::filesystem::path& file)
{
    DWORD cbRights = 0;
    GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &cbRights);
    std::vector<BYTE> rights(cbRights);
    if (cbRights != 0 && !GetFileSecurityW(file.c_str(), DACL_SECURITY_INFORMATION, rights.data(), cbRights, &cbRights))
        throw CFileError("cannot be replaced, its access rights cannot be kept");
    return rights;
}
} // namespace

CReplacedFile::CReplacedFile(const std::filesystem::path& file)
{
    const DWORD dwAttributes = GetFileAttributesW(file.c_str());
    if (dwAttributes == INVALID_FILE_ATTRIBUTES)
        return;
    if ((dwAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0)
        throw CFileError("cannot be written", ERROR_ACCESS_DENIED);
    CUniqueMutex turn(CreateMutexW(nullptr, FALSE, TurnAt(file.native()).c_str()));
    const DWORD dwTaken = turn ? WaitForSingleObject(turn.Get(), 0) : DWORD{WAIT_FAILED};
    if (dwTaken != WAIT_OBJECT_0 && dwTaken != WAIT_ABANDONED)
        throw CFileError("cannot be written, another program is writing it", ERROR_LOCK_VIOLATION);
    m_state = std::make_unique<State>(file, std::move(turn));
}

CReplacedFile::~CReplacedFile() = default;

CUniqueFile CReplacedFile::MakeSuccessor(const std::filesystem::path& file) const
{
    std::vector<BYTE> descriptor = m_state ? RightsOf(m_state->file) : std::vector<BYTE>();
    SECURITY_ATTRIBUTES rights{sizeof(SECURITY_ATTRIBUTES), descriptor.empty() ? nullptr : descriptor.data(), FALSE};
    const DWORD dwAttributes = m_state ? GetFileAttributesW(m_state->file.c_str()) &
                                             (FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE)
                                       : DWORD{0};
    return CUniqueFile(CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, &rights,
                                   CREATE_NEW, dwAttributes != 0 ? dwAttributes : DWORD{FILE_ATTRIBUTE_NORMAL}, nullptr));
}

bool IsOwnFile(const std::filesystem::path& file)
{
    std::error_code ignored;
    return std::filesystem::symlink_status(file, ignored).type() == std::filesystem::file_type::regular;
}

void BringFolderToDisk(const std::filesystem::path&)
{
}
