#include "tests/support/WarningIcon.h"

LRESULT tests::WarningIcon()
{
    return reinterpret_cast<LRESULT>(LoadIconW(nullptr, IDI_WARNING));
}
