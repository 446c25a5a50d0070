// Loaded libraries: where the program's own lie, and what they export.
#pragma once

#include "host/HostError.h"
#include "values/Unique.h"
#include "values/WideText.h"

// The file's full name in the folder of the program.
CWideString BesideProgram(CWideView file);

// The file's full name in the system's folder for libraries.
CWideString InSystemFolder(CWideView file);

// Throws CHostError when the library has no such export.
template <class Function>
Function Export(HMODULE hModule, const char* szName)
{
    const FARPROC pFunction = GetProcAddress(hModule, szName);
    if (!pFunction)
        throw CHostError(std::string("the module has no ") + szName);
    return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(pFunction));
}
