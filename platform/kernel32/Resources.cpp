#include "platform/kernel32/KernelCall.h"
#include "platform/kernel32/Loader.h"
#include "platform/kernel32/Locale.h"

#include <algorithm>
#include <array>

namespace platform
{
namespace
{
HRSRC HandleOf(const ResourceRecord& record)
{
    return reinterpret_cast<HRSRC>(const_cast<ResourceRecord*>(&record));
}

const ResourceRecord* FindRecord(HMODULE hModule, HRSRC hResource)
{
    const std::lock_guard lock(LoaderLock());
    const CModule* const pModule = FindModule(hModule);
    if (!pModule)
        return nullptr;
    const auto found =
        std::ranges::find_if(pModule->Resources(), [&](const auto& record) { return HandleOf(record) == hResource; });
    return found == pModule->Resources().end() ? nullptr : &*found;
}

// The user's language, that language without its country, no language; 0 ranks first.
std::size_t LanguageRank(WORD wLanguage)
{
    const WORD wUser = UserLanguage();
    const std::array preferences{wUser, static_cast<WORD>(wUser & primaryLanguageMask), WORD{0}};
    return static_cast<std::size_t>(std::ranges::find(preferences, wLanguage) - preferences.begin());
}
} // namespace
} // namespace platform

using namespace platform;

HRSRC WINAPI FindResourceW(HMODULE hModule, LPCWSTR szName, LPCWSTR szType)
{
    return KernelCall(
        "FindResourceW", ERROR_RESOURCE_NAME_NOT_FOUND, HRSRC{nullptr},
        [&]
        {
            const std::lock_guard lock(LoaderLock());
            const CModule* const pModule = FindModule(hModule);
            if (!pModule)
                return FailWith(ERROR_INVALID_HANDLE, HRSRC{nullptr});
            if (pModule->Resources().empty())
                return FailWith(ERROR_RESOURCE_DATA_NOT_FOUND, HRSRC{nullptr});

            const auto type = ResourceId::FromArgument(szType);
            const auto name = ResourceId::FromArgument(szName);
            bool bTypeFound = false;
            const ResourceRecord* pBest = nullptr;
            for (const auto& record : pModule->Resources())
            {
                if (record.type != type)
                    continue;
                bTypeFound = true;
                if (record.name == name && (!pBest || LanguageRank(record.wLanguage) < LanguageRank(pBest->wLanguage)))
                    pBest = &record;
            }
            if (pBest)
                return HandleOf(*pBest);
            return FailWith(bTypeFound ? ERROR_RESOURCE_NAME_NOT_FOUND : ERROR_RESOURCE_TYPE_NOT_FOUND, HRSRC{nullptr});
        });
}

HGLOBAL WINAPI LoadResource(HMODULE hModule, HRSRC hResource)
{
    return KernelCall("LoadResource", ERROR_RESOURCE_DATA_NOT_FOUND, HGLOBAL{nullptr},
                      [&]
                      {
                          const ResourceRecord* const pRecord = FindRecord(hModule, hResource);
                          if (!pRecord)
                              return FailWith(ERROR_INVALID_HANDLE, HGLOBAL{nullptr});
                          return HGLOBAL{const_cast<std::byte*>(pRecord->data.data())};
                      });
}

LPVOID WINAPI LockResource(HGLOBAL hResourceData)
{
    return KernelCall("LockResource", ERROR_INVALID_HANDLE, LPVOID{nullptr}, [&] { return LPVOID{hResourceData}; });
}

DWORD WINAPI SizeofResource(HMODULE hModule, HRSRC hResource)
{
    return KernelCall("SizeofResource", ERROR_RESOURCE_DATA_NOT_FOUND, DWORD{0},
                      [&]
                      {
                          const ResourceRecord* const pRecord = FindRecord(hModule, hResource);
                          return pRecord ? static_cast<DWORD>(pRecord->data.size()) : FailWith(ERROR_INVALID_HANDLE, DWORD{0});
                      });
}
