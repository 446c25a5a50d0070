// What stands before a document's root element.
#pragma once

#include "values/WideText.h"

// Whether a document type declaration stands before the root element.
bool HasDocumentType(CWideView text);
