#include "answers/Wording.h"

#include "tests/support/TestFolder.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace answers
{
std::string Quoted(const WCHAR* szText)
{
    return szText ? '"' + Shown(CWideView(szText)) + '"' : "null";
}

std::string ShownErrno(int nErrno)
{
    static constexpr struct
    {
        int nErrno;
        const char* szName;
    } names[] = {
        {ENOENT, "ENOENT"}, {EACCES, "EACCES"}, {EEXIST, "EEXIST"}, {EINVAL, "EINVAL"}, {EILSEQ, "EILSEQ"},
        {EBADF, "EBADF"},   {ENOMEM, "ENOMEM"}, {EMFILE, "EMFILE"}, {ENOSPC, "ENOSPC"}, {ENOTDIR, "ENOTDIR"},
    };
    const auto found = std::ranges::find_if(names, [=](const auto& name) { return name.nErrno == nErrno; });
    return found == std::end(names) ? "errno " + std::to_string(nErrno) : found->szName;
}

CWideString FolderName(const std::filesystem::path& folder)
{
    WCHAR szBefore[MAX_PATH] = {};
    WCHAR szFolder[MAX_PATH] = {};
    GetCurrentDirectoryW(MAX_PATH, szBefore);
    SetCurrentDirectoryW(tests::PlatformNameOf(folder).c_str());
    GetCurrentDirectoryW(MAX_PATH, szFolder);
    SetCurrentDirectoryW(szBefore);
    return szFolder;
}

std::string ShownPlace(CWideView path, CWideView folderName)
{
    if (path.starts_with(folderName))
        return "<folder>" + Shown(path.substr(folderName.size()));
    const bool bHasDrive = path.size() >= 2 && path[1] == OLESTR(':');
    return Shown(bHasDrive ? path.substr(2) : path);
}
} // namespace answers
