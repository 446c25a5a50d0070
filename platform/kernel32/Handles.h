// Live kernel objects behind handles. A handle that names none is an error for the caller, never a crash.
#pragma once

#include <windows.h>

#include <memory>

namespace platform
{
class CKernelObject
{
public:
    CKernelObject() = default;
    CKernelObject(const CKernelObject&) = delete;
    CKernelObject& operator=(const CKernelObject&) = delete;
    virtual ~CKernelObject() = default;
};

// Registers the object; the handle keeps it alive until CloseHandle.
HANDLE OpenHandle(std::shared_ptr<CKernelObject> object);

// The object behind a handle, null when there is none. Holding it keeps it alive while another thread closes the handle.
std::shared_ptr<CKernelObject> ObjectOf(HANDLE hObject);

// The object of the wanted kind behind a handle, null when there is none.
template <class Kind>
std::shared_ptr<Kind> ObjectOfKind(HANDLE hObject)
{
    return std::dynamic_pointer_cast<Kind>(ObjectOf(hObject));
}
} // namespace platform
