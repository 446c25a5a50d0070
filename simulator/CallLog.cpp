#include "simulator/CallLog.h"

#include "simulator/Adapters.h"
#include "simulator/ServiceFolder.h"

#include <objbase.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace simulator
{
namespace
{
std::string Formatted(const char* szFormat, unsigned long long value)
{
    char text[32];
    const int cch = std::snprintf(text, sizeof(text), szFormat, value);
    return std::string(text, static_cast<std::size_t>(std::max(cch, 0)));
}

std::string Quoted(CWideView text)
{
    std::string quoted = "\"";
    for (const WCHAR unit : text)
    {
        const bool bPlain = unit >= OLESTR(' ') && unit <= OLESTR('~') && unit != OLESTR('"') && unit != OLESTR('\\');
        quoted += bPlain ? std::string(1, static_cast<char>(unit)) : Formatted("\\u%04llX", unit);
    }
    return quoted + '"';
}
} // namespace

template <class Append>
CCallLine& CCallLine::Add(Append append) noexcept
{
    try
    {
        if (m_bWanted)
            append();
    }
    catch (...)
    {
        m_bWanted = false;
    }
    return *this;
}

CCallLine::CCallLine(const char* szFunction) noexcept
{
    try
    {
        m_bWanted = PathFromEnvironment(OLESTR("WLAN_SERVICE_LOG")).has_value();
    }
    catch (...)
    {
    }
    Add([&] { m_line = szFunction; });
}

CCallLine& CCallLine::Handle(HANDLE hClient) noexcept
{
    return Add([&] { m_line += " handle=" + Formatted("0x%llX", reinterpret_cast<std::uintptr_t>(hClient)); });
}

CCallLine& CCallLine::Interface(const GUID* pGuid) noexcept
{
    return Add(
        [&]
        {
            m_line += " interface=";
            m_line += pGuid ? Utf8Of(GuidText(*pGuid)) : "null";
        });
}

CCallLine& CCallLine::Name(LPCWSTR szName) noexcept
{
    return Add([&] { m_line += " name=" + (szName ? Quoted(szName) : "null"); });
}

CCallLine& CCallLine::Number(const char* szWhat, DWORD dwValue) noexcept
{
    return Add([&] { m_line += std::string(" ") + szWhat + '=' + std::to_string(dwValue); });
}

CCallLine& CCallLine::Hex(const char* szWhat, DWORD dwValue) noexcept
{
    return Add([&] { m_line += std::string(" ") + szWhat + '=' + Formatted("0x%llX", dwValue); });
}

CCallLine& CCallLine::Length(const char* szWhat, LPCWSTR szText) noexcept
{
    return Add(
        [&]
        { m_line += std::string(" ") + szWhat + (szText ? ".length=" + std::to_string(CWideView(szText).size()) : "=null"); });
}

CCallLine& CCallLine::Bytes(const char* szWhat, const void* pBytes, std::size_t cb) noexcept
{
    return Add(
        [&]
        {
            m_line += std::string(" ") + szWhat + '=';
            const auto* pByte = static_cast<const unsigned char*>(pBytes);
            for (std::size_t i = 0; pByte && i < cb; ++i)
                m_line += Formatted("%02llx", pByte[i]);
            if (!pByte)
                m_line += "null";
        });
}

CCallLine& CCallLine::Given(const char* szWhat, const void* pArgument) noexcept
{
    return Add([&] { m_line += std::string(" ") + szWhat + (pArgument ? "=given" : "=null"); });
}

CCallLine& CCallLine::Reason(const std::string& reason) noexcept
{
    return Add([&] { m_reason = reason; });
}

void CCallLine::Write() noexcept
{
    Add(
        [&]
        {
            m_line += m_reason.empty() ? "\n" : " (" + m_reason + ")\n";
            // The file's name is asked for anew: the log may have been switched off meanwhile.
            const auto path = PathFromEnvironment(OLESTR("WLAN_SERVICE_LOG"));
            if (!path)
                return;
            const CFile file(*path, GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS);
            file.Lock(true);
            file.SeekEnd();
            file.Write(m_line);
        });
}

void CCallLine::Write(DWORD dwResult) noexcept
{
    Add([&] { m_line += " -> " + std::to_string(dwResult); });
    Write();
}
} // namespace simulator
