// Elements of a vendor's text at which the extension never looks.
#pragma once

#include "host/IhvElement.h"
#include "host/check/VendorElements.h"

inline constexpr const char* namesWithPrefix = "not found; no name with a prefix is one of the extension's";

// Finds those that are unknown, prefixed, of the other place, or a second of their name. Which of two has counted shows by
// which is used, so the text has been read before.
void CheckForeignElements(const CVendorElements& elements, VendorPlace place, CFindings& findings);
