#include "tests/support/WarningIcon.h"

// The stand-in knows the standard icons by their numbers alone.
LRESULT tests::WarningIcon()
{
    return 32515;
}
