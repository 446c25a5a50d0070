// File descriptors, and writing to them.
#pragma once

#include "values/Unique.h"

#include <fcntl.h>
#include <string_view>
#include <unistd.h>

struct CDescriptorCloser
{
    using Handle = int;
    static int Empty()
    {
        return -1;
    }
    static void Close(int nDescriptor)
    {
        close(nDescriptor);
    }
};
using CUniqueDescriptor = CUnique<CDescriptorCloser>;

// False, with errno, when not everything could be written.
bool WriteAll(int nDescriptor, std::string_view bytes);
