#include "platform/kernel32/Module.h"

#include "platform/kernel32/Failure.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <string_view>
#include <utility>

#include <dlfcn.h>
#include <link.h>

namespace platform
{
namespace
{
using EntryPoint = decltype(&DllMain);

constexpr char szResourcesBegin[] = "PlatformModuleResources";
constexpr char szResourcesEnd[] = "PlatformModuleResourcesEnd";

// The content of a file of resources; nothing for any other file.
std::vector<std::byte> ReadResourceFile(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    std::vector<std::byte> image(16);
    stream.read(reinterpret_cast<char*>(image.data()), static_cast<std::streamsize>(image.size()));
    if (!stream || !HasResourceHeader(image))
        return {};
    std::for_each(std::istreambuf_iterator<char>(stream), {}, [&](char byte) { image.push_back(static_cast<std::byte>(byte)); });
    return image;
}
} // namespace

CModule::CModule(std::filesystem::path file) : m_file(std::move(file))
{
}

CModule::~CModule()
{
    if (m_pObject)
        dlclose(m_pObject);
}

std::unique_ptr<CModule> CModule::OfProgram()
{
    std::error_code ignored;
    std::unique_ptr<CModule> module(new CModule(std::filesystem::read_symlink("/proc/self/exe", ignored)));
    module->m_pObject = dlopen(nullptr, RTLD_NOW);
    module->FindResources();
    return module;
}

std::unique_ptr<CModule> CModule::Open(const std::filesystem::path& file, bool bResourcesOnly)
{
    std::unique_ptr<CModule> module(new CModule(file));
    module->m_image = ReadResourceFile(file);
    if (!module->m_image.empty())
    {
        module->m_resources = ReadResourceImage(module->m_image);
        return module;
    }
    Require(!bResourcesOnly, ERROR_BAD_EXE_FORMAT);
    module->m_pObject = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    Require(module->m_pObject, ERROR_BAD_EXE_FORMAT); // also for want of a library or symbol: that is told in words only
    module->FindResources();
    return module;
}

void* CModule::OwnSymbol(const char* szName) const noexcept
{
    if (!m_pObject)
        return nullptr;
    void* const pSymbol = dlsym(m_pObject, szName);
    if (!pSymbol)
        return nullptr;
    link_map* pOwnMap = nullptr;
    Dl_info description = {};
    void* pSymbolMap = nullptr;
    if (dlinfo(m_pObject, RTLD_DI_LINKMAP, &pOwnMap) != 0 || dladdr1(pSymbol, &description, &pSymbolMap, RTLD_DL_LINKMAP) == 0)
        return nullptr;
    return pSymbolMap == pOwnMap ? pSymbol : nullptr;
}

BOOL CModule::CallEntryPoint(DWORD dwReason, LPVOID pReserved)
{
    const auto pEntryPoint = reinterpret_cast<EntryPoint>(OwnSymbol("DllMain"));
    return pEntryPoint ? pEntryPoint(Handle(), dwReason, pReserved) : TRUE;
}

BOOL CModule::Attach()
{
    return CallEntryPoint(DLL_PROCESS_ATTACH, nullptr);
}

void CModule::Detach(LPVOID pReserved)
{
    if (!std::exchange(m_bDetached, true))
        CallEntryPoint(DLL_PROCESS_DETACH, pReserved);
}

void CModule::FindResources()
{
    const auto* const pBegin = static_cast<const std::byte*>(OwnSymbol(szResourcesBegin));
    const auto* const pEnd = static_cast<const std::byte*>(OwnSymbol(szResourcesEnd));
    if (pBegin && pEnd && pBegin < pEnd)
        m_resources = ReadResourceImage({pBegin, pEnd});
}
} // namespace platform
