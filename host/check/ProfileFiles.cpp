#include "host/check/ProfileFiles.h"

#include <algorithm>
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
} // namespace

CProfileFiles::CProfileFiles(const std::vector<fs::path>& paths)
{
    Folder named;
    std::error_code ignored;
    for (auto path = paths.rbegin(); path != paths.rend(); ++path)
        named.entries.push_back({*path, fs::is_directory(*path, ignored)});
    m_folders.push_back(std::move(named));
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
        if (folder.entries.empty())
        {
            m_folders.pop_back();
            continue;
        }
        const Entry entry = std::move(folder.entries.back());
        folder.entries.pop_back();
        const fs::path path = folder.path / entry.name;
        if (!entry.bFolder || !Enter(path))
            return path;
    }
    return std::nullopt;
}

bool CProfileFiles::Enter(const fs::path& folder)
{
    std::error_code error;
    Folder inner{folder, {}};
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
    {
        std::error_code ignored;
        const bool bFolder = entry->is_directory(ignored);
        if (bFolder ? !entry->is_symlink(ignored) : IsProfileName(entry->path()))
            inner.entries.push_back({entry->path().filename(), bFolder});
    }
    if (error)
        return false;
    std::sort(inner.entries.begin(), inner.entries.end(),
              [](const Entry& left, const Entry& right) { return left.name > right.name; });
    m_folders.push_back(std::move(inner));
    return true;
}
