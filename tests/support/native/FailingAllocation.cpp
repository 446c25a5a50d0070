// The program's own allocation functions, which every library in the process binds to; only those calls that come from the
// module can be made to fail, under the name by which they go on.
#include "platform/testing/FaultPoint.h"
#include "tests/support/PlatformFunctions.h"

#include <cstdlib>
#include <cstring>
#include <new>
#include <string_view>

#include <dlfcn.h>
#include <link.h>
#include <malloc.h>

namespace
{
bool IsFromModule(void* pCaller)
{
    dl_find_object found = {};
    return _dl_find_object(pCaller, &found) == 0 && std::string_view(found.dlfo_link_map->l_name).ends_with("korihvui.dll");
}

void* Allocate(std::size_t cb, void* pCaller) noexcept
{
    if (IsFromModule(pCaller) && platform::testing::FaultFires(tests::allocation.szName))
        return nullptr;
    void* const p = std::malloc(cb ? cb : 1);
    // A text without room for its end does not find a zero behind it by luck.
    if (p)
        std::memset(p, '~', malloc_usable_size(p));
    return p;
}

void* AllocateOrThrow(std::size_t cb, void* pCaller)
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
