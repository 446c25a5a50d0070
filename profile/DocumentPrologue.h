// What stands before a document's root element.
#pragma once

#include <windows.h>

// Whether a document type declaration stands before the root element. Null counts as an empty text.
bool HasDocumentType(const WCHAR* szText);
