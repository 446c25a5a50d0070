// A loaded module: the program, a shared object, or a file of resources alone.
#pragma once

#include "platform/kernel32/ResourceImage.h"

#include <windows.h>

#include <filesystem>
#include <memory>
#include <vector>

namespace platform
{
class CModule
{
public:
    // The running program.
    static std::unique_ptr<CModule> OfProgram();

    // Maps a shared object or reads a file of resources, which alone is taken when there shall be no code; an entry point
    // is not called. Throws ERROR_BAD_EXE_FORMAT.
    static std::unique_ptr<CModule> Open(const std::filesystem::path& file, bool bResourcesOnly);

    CModule(const CModule&) = delete;
    CModule& operator=(const CModule&) = delete;
    ~CModule();

    HMODULE Handle() noexcept
    {
        return reinterpret_cast<HMODULE>(this);
    }
    const std::filesystem::path& File() const noexcept
    {
        return m_file;
    }
    const std::vector<ResourceRecord>& Resources() const noexcept
    {
        return m_resources;
    }

    // A symbol that this very object exports, never one of the objects that it depends on.
    void* OwnSymbol(const char* szName) const noexcept;

    // Call the entry point when the module has one; it hears of its end once.
    BOOL Attach();
    void Detach(LPVOID pReserved);

    unsigned m_uReferences = 0;
    bool m_bDetached = false;

private:
    explicit CModule(std::filesystem::path file);
    void FindResources();
    BOOL CallEntryPoint(DWORD dwReason, LPVOID pReserved);

    const std::filesystem::path m_file;
    void* m_pObject = nullptr; // the dynamic linker's handle, null for a file of resources
    std::vector<std::byte> m_image;
    std::vector<ResourceRecord> m_resources;
};
} // namespace platform
