// The program's own allocation functions, which every library in the process binds to; only calls that come from the
// module are counted.
#include "tests/support/FailingAllocation.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>

#include <dlfcn.h>
#include <malloc.h>

namespace
{
bool IsFromModule(const void* pCaller)
{
    Dl_info info = {};
    return dladdr(pCaller, &info) != 0 && info.dli_fname && std::string_view(info.dli_fname).ends_with("korihvui.dll");
}

void* Allocate(std::size_t cb, const void* pCaller) noexcept
{
    if (tests::AllocationsAreCounted() && IsFromModule(pCaller) && tests::AllocationFails())
        return nullptr;
    void* const p = std::malloc(cb ? cb : 1);
    // A text without room for its end does not find a zero behind it by luck.
    if (p)
        std::memset(p, '~', malloc_usable_size(p));
    return p;
}

void* AllocateOrThrow(std::size_t cb, const void* pCaller)
{
    if (void* const p = Allocate(cb, pCaller))
        return p;
    throw std::bad_alloc();
}
} // namespace

void* operator new(std::size_t cb)
{
    return AllocateOrThrow(cb, __builtin_return_address(0));
}
void* operator new[](std::size_t cb)
{
    return AllocateOrThrow(cb, __builtin_return_address(0));
}
void* operator new(std::size_t cb, const std::nothrow_t&) noexcept
{
    return Allocate(cb, __builtin_return_address(0));
}
void* operator new[](std::size_t cb, const std::nothrow_t&) noexcept
{
    return Allocate(cb, __builtin_return_address(0));
}
void operator delete(void* p) noexcept
{
    std::free(p);
}
void operator delete[](void* p) noexcept
{
    std::free(p);
}
void operator delete(void* p, std::size_t) noexcept
{
    std::free(p);
}
void operator delete[](void* p, std::size_t) noexcept
{
    std::free(p);
}
