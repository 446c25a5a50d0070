#include "host/Library.h"

namespace
{
// The longest path that the platform knows.
constexpr DWORD maxPathLength = 32767;
} // namespace

CWideString BesideProgram(CWideView file)
{
    CWideString strProgram(maxPathLength, WCHAR{});
    strProgram.resize(GetModuleFileNameW(nullptr, strProgram.data(), maxPathLength));
    strProgram.resize(strProgram.find_last_of(OLESTR("\\/")) + 1);
    return strProgram + CWideString(file);
}

CWideString InSystemFolder(CWideView file)
{
    WCHAR szSystem[MAX_PATH] = {};
    GetSystemDirectoryW(szSystem, MAX_PATH);
    return CWideString(szSystem) + OLESTR("\\") + CWideString(file);
}
