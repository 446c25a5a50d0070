// Reading single registry values. Failures show only in the result; nothing is traced.
#pragma once

#include <windows.h>

// Reads a value of at most four bytes, whatever its registry type; shorter data fills only the low bytes of *pdwValue.
// False, with *pdwValue as it was, when the key cannot be opened or the value is missing or longer.
bool RegReadDword(HKEY hRootKey, const WCHAR* szSubKey, const WCHAR* szValueName, DWORD* pdwValue);

// Reads a value of at most cchCapacity UTF-16 code units into szText, whatever its registry type; what was read is
// terminated. False, with szText as it was, when the key cannot be opened, there is no memory for the value, or it is
// missing, longer, or fills the buffer without a terminator of its own.
bool RegReadString(HKEY hRootKey, const WCHAR* szSubKey, const WCHAR* szValueName, WCHAR* szText, DWORD cchCapacity);
