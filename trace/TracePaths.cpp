#include "trace/TracePaths.h"

#include <algorithm>
#include <new>

#include <io.h>

namespace
{
constexpr CWideView separators = OLESTR("\\/");
} // namespace

int FindLastPathSeparator(const WCHAR* szPath, std::size_t cchBound)
{
    const auto nIndex = CWideView(szPath, std::find(szPath, szPath + cchBound, WCHAR{})).find_last_of(separators);
    return nIndex == CWideView::npos ? 0 : static_cast<int>(nIndex);
}

bool CreateDirectoryPath(const WCHAR* szPath)
{
    constexpr int existenceOnly = 0;
    WCHAR szPrefix[cchPath] = {};
    for (std::size_t i = 0; szPath[i] != WCHAR{}; ++i)
    {
        szPrefix[i] = szPath[i];
        if (i == 0 || separators.find(szPath[i]) == CWideView::npos)
            continue;
        if (_waccess(szPrefix, existenceOnly) != 0 && !CreateDirectoryW(szPrefix, nullptr))
            return false;
    }
    return true;
}

int ReverseFind(const WCHAR* szText, WCHAR ch)
{
    const auto nIndex = CWideView(szText).rfind(ch);
    return nIndex == CWideView::npos ? -1 : static_cast<int>(nIndex);
}

int InsertText(const WCHAR* szText, int nPosition, const WCHAR* szInsert, WCHAR** pszResult)
{
    const CWideView text(szText);
    const CWideView insert(szInsert);
    const auto cchHead = std::min(text.size(), static_cast<std::size_t>(std::max(nPosition, 0)));

    std::unique_ptr<WCHAR[]> result(new (std::nothrow) WCHAR[text.size() + insert.size() + 1]());
    if (result)
    {
        auto* pEnd = std::copy_n(text.data(), cchHead, result.get());
        pEnd = std::copy(insert.begin(), insert.end(), pEnd);
        std::copy(text.begin() + static_cast<std::ptrdiff_t>(cchHead), text.end(), pEnd);
    }
    *pszResult = result.release();
    return static_cast<int>(text.size() + insert.size());
}
