#include "platform/kernel32/Module.h"

#include "platform/kernel32/ModuleSearch.h"
#include "platform/kernel32/ObjectFile.h"

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

// The dynamic linker tells its failures apart in words only.
DWORD LoadErrorFromMessage(const char* szMessage)
{
    const std::string_view message = szMessage ? szMessage : "";
    if (message.find("undefined symbol") != std::string_view::npos)
        return ERROR_PROC_NOT_FOUND;
    if (message.find("cannot open shared object file") != std::string_view::npos)
        return ERROR_MOD_NOT_FOUND;
    return ERROR_BAD_EXE_FORMAT;
}

std::vector<std::byte> ReadWholeFile(const std::filesystem::path& file)
{
    std::ifstream stream(file, std::ios::binary);
    const std::vector<char> content{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    const auto bytes = std::as_bytes(std::span(content));
    return {bytes.begin(), bytes.end()};
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
    std::unique_ptr<CModule> module(new CModule(ProgramFile()));
    module->m_pObject = dlopen(nullptr, RTLD_NOW);
    module->FindResources();
    return module;
}

CModule::Opened CModule::Open(const std::filesystem::path& file)
{
    const ModuleKind kind = KindOfModule(file);
    if (kind == ModuleKind::Unknown)
        return {ERROR_BAD_EXE_FORMAT, nullptr};
    std::unique_ptr<CModule> module(new CModule(file));
    if (kind == ModuleKind::Resources)
        return OpenAsData(file);
    module->m_pObject = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module->m_pObject)
        return {LoadErrorFromMessage(dlerror()), nullptr};
    module->FindResources();
    return {ERROR_SUCCESS, std::move(module)};
}

CModule::Opened CModule::OpenAsData(const std::filesystem::path& file)
{
    auto image = ReadWholeFile(file);
    if (image.empty())
        return {ERROR_FILE_INVALID, nullptr};
    const ModuleKind kind = KindOfModule(file);
    if (kind == ModuleKind::Unknown)
        return {ERROR_BAD_EXE_FORMAT, nullptr};
    std::unique_ptr<CModule> module(new CModule(file));
    module->m_bDataOnly = kind == ModuleKind::Code;
    module->m_image = std::move(image);
    const std::span<const std::byte> bytes(module->m_image);
    module->m_resources = ReadResourceImage(module->m_bDataOnly ? BytesBetween(bytes, szResourcesBegin, szResourcesEnd) : bytes);
    return {ERROR_SUCCESS, std::move(module)};
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
