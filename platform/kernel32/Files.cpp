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
BOOL Transfer(Move&& move, int fd, Byte* pBytes, DWORD cbWanted, LPDWORD pcbDone, const OVERLAPPED* pOverlapped)
{
    if (!pcbDone || pOverlapped) // there are no transfers at a place of their own
        return FailWith(ERROR_INVALID_PARAMETER, FALSE);
    *pcbDone = 0;
    while (*pcbDone < cbWanted)
    {
        const auto cbMoved = move(fd, pBytes + *pcbDone, cbWanted - *pcbDone);
        if (cbMoved == 0)
            break; // the end of the file
        if (cbMoved < 0 && errno != EINTR)
            return FailWith(ErrorFromErrno(errno), FALSE);
        *pcbDone += static_cast<DWORD>(std::max<decltype(cbMoved)>(cbMoved, 0));
    }
    return TRUE;
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
                          if (pAttributes || dwFlagsAndAttributes != FILE_ATTRIBUTE_NORMAL || hTemplate)
                              return FailWith(ERROR_NOT_SUPPORTED, INVALID_HANDLE_VALUE);
                          const auto path = CheckPath(szFileName);
                          if (path.dwError != ERROR_SUCCESS)
                              return FailWith(path.dwError, INVALID_HANDLE_VALUE);
                          const OpenRequest request{dwAccess, dwShareMode, dwDisposition};
                          auto opened = OpenHostFile(path.hostPath, request);
                          if (opened.dwError != ERROR_SUCCESS)
                              return FailWith(opened.dwError, INVALID_HANDLE_VALUE);
                          return OpenHandle(std::make_shared<CFileObject>(std::move(opened.descriptor), request));
                      });
}

DWORD WINAPI GetFileSize(HANDLE hFile, LPDWORD pdwSizeHigh)
{
    return FileCall("GetFileSize", ERROR_INVALID_HANDLE, INVALID_FILE_SIZE, hFile, 0,
                    [&](const CFileObject& file)
                    {
                        struct stat status = {};
                        if (fstat(file.Descriptor(), &status) != 0)
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
    return FileCall(
        "SetFilePointer", ERROR_INVALID_HANDLE, INVALID_SET_FILE_POINTER, hFile, 0,
        [&](const CFileObject& file)
        {
            static constexpr int origins[] = {SEEK_SET, SEEK_CUR, SEEK_END};
            if (!plDistanceHigh || dwMoveMethod >= std::size(origins)) // every file may grow beyond 32 bits
                return FailWith(ERROR_INVALID_PARAMETER, INVALID_SET_FILE_POINTER);
            const auto distance =
                static_cast<off_t>((static_cast<std::uint64_t>(*plDistanceHigh) << 32) | static_cast<DWORD>(lDistance));
            const off_t position = lseek(file.Descriptor(), distance, origins[dwMoveMethod]);
            if (position < 0)
                return FailWith(errno == EINVAL ? ERROR_NEGATIVE_SEEK : ErrorFromErrno(errno), INVALID_SET_FILE_POINTER);
            *plDistanceHigh = static_cast<LONG>(position >> 32);
            SetLastError(NO_ERROR);
            return static_cast<DWORD>(position);
        });
}

BOOL WINAPI ReadFile(HANDLE hFile, LPVOID pBuffer, DWORD cbToRead, LPDWORD pcbRead, LPOVERLAPPED pOverlapped)
{
    return FileCall("ReadFile", ERROR_READ_FAULT, FALSE, hFile, GENERIC_READ,
                    [&](const CFileObject& file)
                    { return Transfer(read, file.Descriptor(), static_cast<BYTE*>(pBuffer), cbToRead, pcbRead, pOverlapped); });
}

BOOL WINAPI WriteFile(HANDLE hFile, LPCVOID pBuffer, DWORD cbToWrite, LPDWORD pcbWritten, LPOVERLAPPED pOverlapped)
{
    return FileCall(
        "WriteFile", ERROR_WRITE_FAULT, FALSE, hFile, GENERIC_WRITE,
        [&](const CFileObject& file)
        { return Transfer(write, file.Descriptor(), static_cast<const BYTE*>(pBuffer), cbToWrite, pcbWritten, pOverlapped); });
}

BOOL WINAPI FlushFileBuffers(HANDLE hFile)
{
    return FileCall("FlushFileBuffers", ERROR_WRITE_FAULT, FALSE, hFile, GENERIC_WRITE,
                    [](const CFileObject& file)
                    { return fsync(file.Descriptor()) == 0 ? TRUE : FailWith(ErrorFromErrno(errno), FALSE); });
}
