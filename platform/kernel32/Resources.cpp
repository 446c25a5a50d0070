#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/Loader.h"

#include <algorithm>

namespace platform
{
namespace
{
// A resource's handle is its record, which lives as long as its module is loaded.
HRSRC HandleOf(const ResourceRecord& record)
{
    return reinterpret_cast<HRSRC>(const_cast<ResourceRecord*>(&record));
}

const ResourceRecord& RecordOf(HRSRC hResource)
{
    Require(hResource, ERROR_INVALID_HANDLE);
    return *reinterpret_cast<const ResourceRecord*>(hResource);
}

// 0, which no resource that is asked for has, for a text.
WORD NumberOf(LPCWSTR szId)
{
    return IS_INTRESOURCE(szId) ? LOWORD(reinterpret_cast<ULONG_PTR>(szId)) : WORD{0};
}
} // namespace
} // namespace platform

using namespace platform;

// Each module has its resources in one language, so that there is nothing to choose from.
HRSRC WINAPI FindResourceW(HMODULE hModule, LPCWSTR szName, LPCWSTR szType)
{
    return KernelCall("FindResourceW", ERROR_RESOURCE_NAME_NOT_FOUND, HRSRC{nullptr},
                      [&]
                      {
                          const std::lock_guard lock(LoaderLock());
                          const CModule* const pModule = FindModule(hModule);
                          Require(pModule, ERROR_INVALID_HANDLE);
                          const WORD wType = NumberOf(szType);
                          const WORD wName = NumberOf(szName);
                          const auto found = std::ranges::find_if(pModule->Resources(), [&](const ResourceRecord& record)
                                                                  { return record.wType == wType && record.wName == wName; });
                          Require(wName != 0 && found != pModule->Resources().end(), ERROR_RESOURCE_NAME_NOT_FOUND);
                          return HandleOf(*found);
                      });
}

HGLOBAL WINAPI LoadResource(HMODULE, HRSRC hResource)
{
    return KernelCall("LoadResource", ERROR_RESOURCE_DATA_NOT_FOUND, HGLOBAL{nullptr},
                      [&] { return HGLOBAL{const_cast<std::byte*>(RecordOf(hResource).data.data())}; });
}

LPVOID WINAPI LockResource(HGLOBAL hResourceData)
{
    return KernelCall("LockResource", ERROR_INVALID_HANDLE, LPVOID{nullptr}, [&] { return LPVOID{hResourceData}; });
}

DWORD WINAPI SizeofResource(HMODULE, HRSRC hResource)
{
    return KernelCall("SizeofResource", ERROR_RESOURCE_DATA_NOT_FOUND, DWORD{0},
                      [&] { return static_cast<DWORD>(RecordOf(hResource).data.size()); });
}
