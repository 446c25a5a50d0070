#include "platform/advapi32/Operation.h"

#include <utility>

namespace platform::registry
{
LSTATUS FindTarget(HKEY hKey, CHiveSession& session, Target& target)
{
    auto open = FindHandle(hKey);
    if (!open)
        return ERROR_INVALID_HANDLE;
    if (open->bDeleted)
        return ERROR_KEY_DELETED;
    target.place = Locate(session.Root(), open->path);
    if (!target.place.pKey)
    {
        MarkHandlesDeleted(open->path); // by another process
        return ERROR_KEY_DELETED;
    }
    target.samHandle = open->bPredefined ? target.place.samGranted : open->samDesired;
    target.path = std::move(open->path);
    return ERROR_SUCCESS;
}

LSTATUS FindSubKey(LPCWSTR szSubKey, Target& target)
{
    const auto names = SplitSubKey(szSubKey);
    if (!names)
        return ERROR_BAD_PATHNAME;
    for (const auto& name : *names)
    {
        if (name.size() > maxKeyNameLength)
            return ERROR_INVALID_PARAMETER;
        target.path.push_back(FoldName(name));
        target.place = Descend(target.place, target.path.back());
        if (!target.place.pKey)
            return ERROR_FILE_NOT_FOUND;
    }
    return ERROR_SUCCESS;
}
} // namespace platform::registry
