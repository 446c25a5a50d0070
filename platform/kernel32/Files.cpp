#include "platform/kernel32/FileObject.h"
#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/MachineError.h"
#include "platform/kernel32/PathCheck.h"
#include "platform/testing/Accounts.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform
{
namespace
{
using testing::Account;

// The requests that CreateFileW honours; anything else is refused, not ignored.
DWORD CheckRequest(const OpenRequest& request, const SECURITY_ATTRIBUTES* pAttributes, DWORD dwFlagsAndAttributes,
                   HANDLE hTemplate)
{
    constexpr DWORD dwShareModes = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    if ((request.dwAccess & ~(GENERIC_READ | GENERIC_WRITE)) != 0 || (request.dwShareMode & ~dwShareModes) != 0)
        return ERROR_INVALID_PARAMETER;
    if (request.dwDisposition < CREATE_NEW || request.dwDisposition > TRUNCATE_EXISTING)
        return ERROR_INVALID_PARAMETER;
    if (request.dwDisposition == TRUNCATE_EXISTING && (request.dwAccess & GENERIC_WRITE) == 0)
        return ERROR_INVALID_PARAMETER;
    if ((dwFlagsAndAttributes & ~(FILE_ATTRIBUTE_NORMAL | FILE_ATTRIBUTE_READONLY)) != 0)
        return ERROR_INVALID_PARAMETER;
    if (hTemplate || (pAttributes && (pAttributes->lpSecurityDescriptor || pAttributes->bInheritHandle)))
        return ERROR_NOT_SUPPORTED;
    return ERROR_SUCCESS;
}

off_t PositionOf(int fd)
{
    return lseek(fd, 0, SEEK_CUR);
}

// The part of ReadFile and WriteFile that is the same: argument checks, the place in the file, locks.
DWORD PrepareTransfer(const CFileObject* pFile, DWORD dwAccess, DWORD cbTransfer, DWORD* pcbDone, const OVERLAPPED* pOverlapped)
{
    if (pcbDone)
        *pcbDone = 0;
    if (!pFile)
        return ERROR_INVALID_HANDLE;
    if (!pcbDone && !pOverlapped)
        return ERROR_INVALID_PARAMETER;
    if (!pFile->Grants(dwAccess))
        return ERROR_ACCESS_DENIED;
    off_t position = PositionOf(pFile->Descriptor());
    if (pOverlapped)
    {
        position = static_cast<off_t>((std::uint64_t{pOverlapped->OffsetHigh} << 32) | pOverlapped->Offset);
        if (position < 0 || lseek(pFile->Descriptor(), position, SEEK_SET) < 0)
            return ERROR_INVALID_PARAMETER;
    }
    if (position < 0)
        return ERROR_SUCCESS; // a pipe has no positions and no locks
    const auto begin = static_cast<std::uint64_t>(position);
    return pFile->IsLockedAgainst({begin, begin + cbTransfer}, dwAccess == GENERIC_WRITE) ? ERROR_LOCK_VIOLATION : ERROR_SUCCESS;
}
} // namespace

CFileObject::CFileObject(OpenedFile opened, DWORD dwAccess) : m_opened(std::move(opened)), m_dwAccess(dwAccess)
{
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
                          const OpenRequest request{dwAccess, dwShareMode, dwDisposition,
                                                    (dwFlagsAndAttributes & FILE_ATTRIBUTE_READONLY) != 0};
                          const DWORD dwRequestError = CheckRequest(request, pAttributes, dwFlagsAndAttributes, hTemplate);
                          if (dwRequestError != ERROR_SUCCESS)
                              return FailWith(dwRequestError, INVALID_HANDLE_VALUE);
                          const auto path = CheckPath(szFileName);
                          if (path.dwError != ERROR_SUCCESS)
                              return FailWith(path.dwError, INVALID_HANDLE_VALUE);
                          auto opened = OpenHostFile(path.hostPath, request);
                          if (opened.dwError != ERROR_SUCCESS)
                              return FailWith(opened.dwError, INVALID_HANDLE_VALUE);

                          const bool bTellsExisted =
                              opened.bExisted && (dwDisposition == CREATE_ALWAYS || dwDisposition == OPEN_ALWAYS);
                          const HANDLE hFile = OpenHandle(std::make_shared<CFileObject>(std::move(opened), dwAccess));
                          // Part of the contract: with these dispositions the last error tells which of the two happened.
                          SetLastError(bTellsExisted ? ERROR_ALREADY_EXISTS : ERROR_SUCCESS);
                          return hFile;
                      });
}

DWORD WINAPI GetFileSize(HANDLE hFile, LPDWORD pdwSizeHigh)
{
    return KernelCall("GetFileSize", ERROR_INVALID_HANDLE, INVALID_FILE_SIZE,
                      [&]
                      {
                          const auto file = ObjectOfKind<CFileObject>(hFile);
                          if (!file)
                              return FailWith(ERROR_INVALID_HANDLE, INVALID_FILE_SIZE);
                          struct stat status = {};
                          if (fstat(file->Descriptor(), &status) != 0)
                              return FailWith(ErrorFromErrno(errno), INVALID_FILE_SIZE);
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
    return KernelCall(
        "SetFilePointer", ERROR_INVALID_HANDLE, INVALID_SET_FILE_POINTER,
        [&]
        {
            const auto file = ObjectOfKind<CFileObject>(hFile);
            if (!file)
                return FailWith(ERROR_INVALID_HANDLE, INVALID_SET_FILE_POINTER);
            constexpr int origins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
            if (dwMoveMethod >= std::size(origins))
                return FailWith(ERROR_INVALID_PARAMETER, INVALID_SET_FILE_POINTER);

            // Without a high half the distance is a signed number of 32 bits; with one, the low half is unsigned.
            off_t distance = lDistance;
            if (plDistanceHigh)
                distance =
                    static_cast<off_t>((static_cast<std::uint64_t>(*plDistanceHigh) << 32) | static_cast<DWORD>(lDistance));
            const off_t before = PositionOf(file->Descriptor());
            const off_t position = lseek(file->Descriptor(), distance, origins[dwMoveMethod]);
            if (position < 0)
                return FailWith(errno == EINVAL ? ERROR_NEGATIVE_SEEK : ErrorFromErrno(errno), INVALID_SET_FILE_POINTER);
            if (!plDistanceHigh && position > 0xFFFFFFFFLL)
            {
                lseek(file->Descriptor(), before, SEEK_SET);
                return FailWith(ERROR_INVALID_PARAMETER, INVALID_SET_FILE_POINTER);
            }
            if (plDistanceHigh)
                *plDistanceHigh = static_cast<LONG>(position >> 32);
            SetLastError(NO_ERROR);
            return static_cast<DWORD>(position);
        });
}

BOOL WINAPI SetEndOfFile(HANDLE hFile)
{
    return KernelCall("SetEndOfFile", ERROR_DISK_FULL, FALSE,
                      [&]
                      {
                          const auto file = ObjectOfKind<CFileObject>(hFile);
                          if (!file)
                              return FailWith(ERROR_INVALID_HANDLE, FALSE);
                          if (!file->Grants(GENERIC_WRITE))
                              return FailWith(ERROR_ACCESS_DENIED, FALSE);
                          const off_t position = PositionOf(file->Descriptor());
                          if (position < 0 || ftruncate(file->Descriptor(), position) != 0)
                              return FailWith(ErrorFromErrno(errno), FALSE);
                          return TRUE;
                      });
}

BOOL WINAPI ReadFile(HANDLE hFile, LPVOID pBuffer, DWORD cbToRead, LPDWORD pcbRead, LPOVERLAPPED pOverlapped)
{
    return KernelCall("ReadFile", ERROR_READ_FAULT, FALSE,
                      [&]
                      {
                          const auto file = ObjectOfKind<CFileObject>(hFile);
                          const DWORD dwError = PrepareTransfer(file.get(), GENERIC_READ, cbToRead, pcbRead, pOverlapped);
                          if (dwError != ERROR_SUCCESS)
                              return FailWith(dwError, FALSE);
                          DWORD cbDone = 0;
                          while (cbDone < cbToRead)
                          {
                              const auto cbRead =
                                  read(file->Descriptor(), static_cast<BYTE*>(pBuffer) + cbDone, cbToRead - cbDone);
                              if (cbRead == 0)
                                  break;
                              if (cbRead < 0 && errno != EINTR)
                                  return FailWith(ErrorFromErrno(errno), FALSE);
                              cbDone += static_cast<DWORD>(std::max<decltype(cbRead)>(cbRead, 0));
                          }
                          if (pcbRead)
                              *pcbRead = cbDone;
                          // The end of the file is an error only for a read at a place given by the caller.
                          return cbDone == 0 && cbToRead > 0 && pOverlapped ? FailWith(ERROR_HANDLE_EOF, FALSE) : TRUE;
                      });
}

BOOL WINAPI WriteFile(HANDLE hFile, LPCVOID pBuffer, DWORD cbToWrite, LPDWORD pcbWritten, LPOVERLAPPED pOverlapped)
{
    return KernelCall("WriteFile", ERROR_WRITE_FAULT, FALSE,
                      [&]
                      {
                          const auto file = ObjectOfKind<CFileObject>(hFile);
                          const DWORD dwError = PrepareTransfer(file.get(), GENERIC_WRITE, cbToWrite, pcbWritten, pOverlapped);
                          if (dwError != ERROR_SUCCESS)
                              return FailWith(dwError, FALSE);
                          DWORD cbDone = 0;
                          while (cbDone < cbToWrite)
                          {
                              const auto cbWritten =
                                  write(file->Descriptor(), static_cast<const BYTE*>(pBuffer) + cbDone, cbToWrite - cbDone);
                              if (cbWritten < 0 && errno != EINTR)
                                  return FailWith(ErrorFromErrno(errno), FALSE);
                              cbDone += static_cast<DWORD>(std::max<decltype(cbWritten)>(cbWritten, 0));
                              if (pcbWritten)
                                  *pcbWritten = cbDone;
                          }
                          return TRUE;
                      });
}

BOOL WINAPI FlushFileBuffers(HANDLE hFile)
{
    return KernelCall("FlushFileBuffers", ERROR_WRITE_FAULT, FALSE,
                      [&]
                      {
                          const auto file = ObjectOfKind<CFileObject>(hFile);
                          if (!file)
                              return FailWith(ERROR_INVALID_HANDLE, FALSE);
                          if (!file->Grants(GENERIC_WRITE))
                              return FailWith(ERROR_ACCESS_DENIED, FALSE);
                          return fsync(file->Descriptor()) == 0 ? TRUE : FailWith(ErrorFromErrno(errno), FALSE);
                      });
}
