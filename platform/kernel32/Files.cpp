#include "platform/kernel32/FileObject.h"
#include "platform/kernel32/MachineError.h"
#include "platform/kernel32/Paths.h"
#include "platform/testing/Accounts.h"

#include <algorithm>
#include <cerrno>

#include <unistd.h>

namespace platform
{
namespace
{
using testing::Account;

// ReadFile and WriteFile: moves as much as the file takes or gives, wherever its position is.
template <class Move, class Byte>
void Transfer(Move&& move, const CFileObject& file, Byte* pBytes, DWORD cbWanted, LPDWORD pcbDone, const OVERLAPPED* pOverlapped)
{
    Require(pcbDone && !pOverlapped, ERROR_INVALID_PARAMETER); // there are no transfers at a place of their own
    *pcbDone = 0;
    while (*pcbDone < cbWanted)
    {
        const auto cbMoved = move(file.Descriptor(), pBytes + *pcbDone, cbWanted - *pcbDone);
        if (cbMoved == 0)
            break; // the end of the file
        RequireDone(cbMoved < 0 && errno != EINTR ? -1 : 0);
        *pcbDone += static_cast<DWORD>(std::max<decltype(cbMoved)>(cbMoved, 0));
    }
}
} // namespace

CFileObject::CFileObject(CDescriptor descriptor, const OpenRequest& request)
    : m_descriptor(std::move(descriptor)), m_dwAccess(request.dwAccess)
{
    if ((request.dwShareMode & FILE_SHARE_DELETE) == 0)
        m_nameHold.emplace(m_descriptor);
    testing::ChangeAccount(Account::FileHandle, +1);
}

CFileObject::~CFileObject()
{
    testing::ChangeAccount(Account::FileHandle, -1);
}
} // namespace platform

using namespace platform;

HANDLE WINAPI CreateFileW(LPCWSTR szFileName, DWORD dwAccess, DWORD dwShareMode, LPSECURITY_ATTRIBUTES pAttributes,
                          DWORD dwDisposition, DWORD dwFlagsAndAttributes, HANDLE hTemplate)
{
    return KernelCall("CreateFileW", ERROR_ACCESS_DENIED, INVALID_HANDLE_VALUE,
                      [&]
                      {
                          Require(!pAttributes && dwFlagsAndAttributes == FILE_ATTRIBUTE_NORMAL && !hTemplate,
                                  ERROR_NOT_SUPPORTED);
                          const OpenRequest request{dwAccess, dwShareMode, dwDisposition};
                          return OpenHandle(std::make_shared<CFileObject>(OpenRealFile(RealPath(szFileName), request), request));
                      });
}

DWORD WINAPI GetFileSize(HANDLE hFile, LPDWORD pdwSizeHigh)
{
    return KernelCall("GetFileSize", ERROR_INVALID_HANDLE, INVALID_FILE_SIZE,
                      [&]
                      {
                          struct stat status = {};
                          RequireDone(fstat(FileOf(hFile)->Descriptor(), &status));
                          const auto size = static_cast<std::uint64_t>(status.st_size);
                          if (pdwSizeHigh)
                              *pdwSizeHigh = static_cast<DWORD>(size >> 32);
                          // The low half may look like the failure value; the last error tells the two apart.
                          SetLastError(NO_ERROR);
                          return static_cast<DWORD>(size);
                      });
}

DWORD WINAPI SetFilePointer(HANDLE hFile, LONG lDistance, PLONG plDistanceHigh, DWORD dwMoveMethod)
{
    return KernelCall("SetFilePointer", ERROR_INVALID_HANDLE, INVALID_SET_FILE_POINTER,
                      [&]
                      {
                          const auto file = FileOf(hFile);
                          static constexpr int origins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
                          Require(dwMoveMethod < std::size(origins), ERROR_INVALID_PARAMETER);
                          // Without a high half the distance is a signed number of 32 bits; with one, the low half is unsigned.
                          off_t distance = lDistance;
                          if (plDistanceHigh)
                              distance = static_cast<off_t>((static_cast<std::uint64_t>(*plDistanceHigh) << 32) |
                                                            static_cast<DWORD>(lDistance));
                          const off_t position = lseek(file->Descriptor(), distance, origins[dwMoveMethod]);
                          Require(position >= 0 || errno != EINVAL, ERROR_NEGATIVE_SEEK);
                          Require(position >= 0 && (plDistanceHigh || position <= UINT32_MAX), ERROR_INVALID_PARAMETER);
                          if (plDistanceHigh)
                              *plDistanceHigh = static_cast<LONG>(position >> 32);
                          SetLastError(NO_ERROR);
                          return static_cast<DWORD>(position);
                      });
}

BOOL WINAPI ReadFile(HANDLE hFile, LPVOID pBuffer, DWORD cbToRead, LPDWORD pcbRead, LPOVERLAPPED pOverlapped)
{
    return KernelCall("ReadFile", ERROR_READ_FAULT, FALSE,
                      [&]
                      {
                          const auto file = FileOf(hFile, GENERIC_READ);
                          Transfer(read, *file, static_cast<BYTE*>(pBuffer), cbToRead, pcbRead, pOverlapped);
                      });
}

BOOL WINAPI WriteFile(HANDLE hFile, LPCVOID pBuffer, DWORD cbToWrite, LPDWORD pcbWritten, LPOVERLAPPED pOverlapped)
{
    return KernelCall("WriteFile", ERROR_WRITE_FAULT, FALSE,
                      [&]
                      {
                          const auto file = FileOf(hFile, GENERIC_WRITE);
                          Transfer(write, *file, static_cast<const BYTE*>(pBuffer), cbToWrite, pcbWritten, pOverlapped);
                      });
}

BOOL WINAPI FlushFileBuffers(HANDLE hFile)
{
    return KernelCall("FlushFileBuffers", ERROR_WRITE_FAULT, FALSE,
                      [&] { RequireDone(fsync(FileOf(hFile, GENERIC_WRITE)->Descriptor())); });
}
