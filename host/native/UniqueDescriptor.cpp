#include "host/native/UniqueDescriptor.h"

#include <cerrno>

bool WriteAll(int nDescriptor, std::string_view bytes)
{
    while (!bytes.empty())
    {
        const ssize_t cbWritten = write(nDescriptor, bytes.data(), bytes.size());
        if (cbWritten < 0 && errno == EINTR)
            continue;
        if (cbWritten < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(cbWritten));
    }
    return true;
}
