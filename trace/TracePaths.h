// Operations on paths: zero-terminated UTF-16 of at most MAX_PATH code units. They keep no state and trace nothing.
#pragma once

#include "values/WideText.h"

#include <memory>

// Room for a path with its terminator.
constexpr std::size_t cchPath = MAX_PATH + 1;

// Index of the last backslash or slash, no further than the bound; 0 when there is none, so that a separator at the very
// beginning and no separator give the same answer.
int FindLastPathSeparator(const WCHAR* szPath, std::size_t cchBound);

// Creates every missing folder along the path, up to its last separator; what stands behind that is not created.
// False at the first folder that cannot be created (those before it stay).
bool CreateDirectoryPath(const WCHAR* szPath);

// Index of the last occurrence of the character, or -1.
int ReverseFind(const WCHAR* szText, WCHAR ch);

// Makes a new text: szText with szInsert put in before index nPosition (below 0 counts as 0, beyond the end as the end).
// Returns its length; *pszResult receives the new array, the caller's to free with delete[], or null when there is no memory.
int InsertText(const WCHAR* szText, int nPosition, const WCHAR* szInsert, WCHAR** pszResult);
