// The classes that the module serves under its one class identifier, chosen by the interface asked for. All that the class
// factory knows of them.
#pragma once

#include <windows.h>

#include <span>

struct ServedClass
{
    const IID& iid;
    void (*traceChoice)();
    // S_OK with the caller's only reference, E_OUTOFMEMORY, or the result of the object's QueryInterface.
    HRESULT (*create)(REFIID riid, void** ppvObject);
};

std::span<const ServedClass> ServedClasses();
