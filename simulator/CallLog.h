// The call log: the file named by WLAN_SERVICE_LOG, a line for each call. Key material never gets there: profile texts
// are logged by their length.
#pragma once

#include "values/Utf8Text.h"

#include <windows.h>

#include <cstddef>
#include <string>

namespace simulator
{
// One line. Nothing here fails: a line for which there is no memory or no disk is lost, the call goes on. Costs nothing
// while there is no log.
class CCallLine
{
public:
    explicit CCallLine(const char* szFunction) noexcept;

    CCallLine& Handle(HANDLE hClient) noexcept;
    CCallLine& Interface(const GUID* pGuid) noexcept;
    CCallLine& Name(LPCWSTR szName) noexcept; // quoted, with everything but printable ASCII written as numbers
    CCallLine& Number(const char* szWhat, DWORD dwValue) noexcept;
    CCallLine& Hex(const char* szWhat, DWORD dwValue) noexcept;
    CCallLine& Length(const char* szWhat, LPCWSTR szText) noexcept; // in code units
    CCallLine& Bytes(const char* szWhat, const void* pBytes, std::size_t cb) noexcept;
    CCallLine& Given(const char* szWhat, const void* pArgument) noexcept; // whether a pointer was passed
    CCallLine& Reason(const std::string& reason) noexcept;

    // Appends the line to the file.
    void Write() noexcept;
    void Write(DWORD dwResult) noexcept;

private:
    template <class Append>
    CCallLine& Add(Append append) noexcept;

    bool m_bWanted = false;
    std::string m_line;
    std::string m_reason;
};
} // namespace simulator
