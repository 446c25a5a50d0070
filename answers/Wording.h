// Texts, codes and places that several subjects put in the same words.
#pragma once

#include "answers/Record.h"

namespace answers
{
// The text in quotes, or "null".
std::string Quoted(const WCHAR* szText);
// "ENOENT": the platforms number some of these differently.
std::string ShownErrno(int nErrno);
// The folder as the platform itself names it, with its drive.
CWideString FolderName(const std::filesystem::path& folder);
// A path in that folder as "<folder>\name", any other without its drive: what differs between machines goes.
std::string ShownPlace(CWideView path, CWideView folderName);
} // namespace answers
