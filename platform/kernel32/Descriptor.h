// A file descriptor with its owner.
#pragma once

#include <unistd.h>

#include <utility>

namespace platform
{
class CDescriptor
{
public:
    CDescriptor() = default;
    explicit CDescriptor(int fd) noexcept : m_fd(fd)
    {
    }
    CDescriptor(CDescriptor&& other) noexcept : m_fd(other.Detach())
    {
    }
    CDescriptor& operator=(CDescriptor&& other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
    ~CDescriptor()
    {
        if (m_fd >= 0)
            close(m_fd);
    }

    int Get() const noexcept
    {
        return m_fd;
    }
    int Detach() noexcept
    {
        return std::exchange(m_fd, -1);
    }

private:
    int m_fd = -1;
};
} // namespace platform
