// Fails every call of a set of functions in a set of operations, one at a time.
#pragma once

#include "tests/module/Operation.h"

#include <vector>

namespace tests::walk
{
// Each call that fails is checked: the outcome is one that the operation may have, nothing is left behind, no lock is left
// held, and the operation works again. Prints how many (function, call, operation) triples there were.
void Walk(std::span<const Operation> operations, const std::vector<PlatformFunction>& functions);
} // namespace tests::walk
