#include "host/check/ProfileFiles.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace
{
namespace fs = std::filesystem;

bool IsProfileName(const fs::path& name)
{
    std::string strExtension = name.extension().string();
    for (char& c : strExtension)
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return strExtension == ".xml";
}

bool IsWanted(const fs::directory_entry& entry)
{
    std::error_code ignored;
    if (entry.is_directory(ignored))
        return !entry.is_symlink(ignored);
    return IsProfileName(entry.path());
}
} // namespace

CProfileFiles::CProfileFiles(std::vector<fs::path> paths)
{
    std::reverse(paths.begin(), paths.end());
    m_folders.push_back({{}, std::move(paths)});
}

bool CProfileFiles::IsAtEnd()
{
    if (!m_next)
        m_next = Find();
    return !m_next;
}

std::optional<fs::path> CProfileFiles::Next()
{
    return m_next ? std::exchange(m_next, std::nullopt) : Find();
}

std::optional<fs::path> CProfileFiles::Find()
{
    while (!m_folders.empty())
    {
        Folder& folder = m_folders.back();
        if (folder.names.empty())
        {
            m_folders.pop_back();
            continue;
        }
        const fs::path path = folder.path / folder.names.back();
        folder.names.pop_back();
        std::error_code ignored;
        if (!fs::is_directory(path, ignored) || !Enter(path))
            return path;
    }
    return std::nullopt;
}

bool CProfileFiles::Enter(const fs::path& folder)
{
    std::error_code error;
    Folder inner{folder, {}};
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        if (IsWanted(*entry))
            inner.names.push_back(entry->path().filename());
    if (error)
        return false;
    std::sort(inner.names.begin(), inner.names.end(), std::greater());
    m_folders.push_back(std::move(inner));
    return true;
}
