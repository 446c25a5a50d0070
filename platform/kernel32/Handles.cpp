#include "platform/kernel32/Handles.h"

#include "platform/kernel32/KernelCall.h"

#include <mutex>
#include <unordered_map>

namespace platform
{
namespace
{
// Outlives the static objects of modules and programs, which may close handles as late as that.
struct HandleTable
{
    std::mutex lock;
    std::unordered_map<HANDLE, std::shared_ptr<CKernelObject>> objects;
};

HandleTable& Table()
{
    static auto* const pTable = new HandleTable;
    return *pTable;
}
} // namespace

HANDLE OpenHandle(std::shared_ptr<CKernelObject> object)
{
    const HANDLE hObject = object.get();
    const std::lock_guard lock(Table().lock);
    Table().objects.emplace(hObject, std::move(object));
    return hObject;
}

std::shared_ptr<CKernelObject> ObjectOf(HANDLE hObject)
{
    const std::lock_guard lock(Table().lock);
    const auto found = Table().objects.find(hObject);
    return found == Table().objects.end() ? nullptr : found->second;
}
} // namespace platform

using namespace platform;

BOOL WINAPI CloseHandle(HANDLE hObject)
{
    return GiveBackCall("CloseHandle", ERROR_INVALID_HANDLE,
                        [&]
                        {
                            // Destroyed after the table's lock is released: closing a file may take its time.
                            std::shared_ptr<CKernelObject> object;
                            const std::lock_guard lock(Table().lock);
                            const auto found = Table().objects.find(hObject);
                            Require(found != Table().objects.end(), ERROR_INVALID_HANDLE);
                            object = std::move(found->second);
                            Table().objects.erase(found);
                        });
}
