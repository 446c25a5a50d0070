// The elements that the extension knows in the vendor's texts.
#pragma once

#include "host/IhvElement.h"

#include <vector>

// The names that are known below an element, which is told by the names from below the root on ("Diagnostics/Channel"; empty
// for the root itself). In the order of a profile.
std::vector<CWideView> KnownBelow(VendorPlace place, CWideView path);

// Whether two names differ in nothing but the case of letters.
bool IsSameButCase(CWideView left, CWideView right);

// The known name that the name was probably meant to be; empty when none is near.
CWideView NearestName(CWideView name, const std::vector<CWideView>& known);
