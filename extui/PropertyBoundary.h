// The boundary of property operations: a failure that was raised leaves the error line that every failing operation of a
// property leaves.
#pragma once

#include "com/Boundary.h"
#include "com/TraceError.h"

template <class Operation>
HRESULT AtPropertyBoundary(const Operation& operation) noexcept
{
    bool bReturned = false;
    const HRESULT hr = AtBoundary(
        [&]
        {
            const HRESULT hrOperation = operation();
            bReturned = true;
            return hrOperation;
        });
    return bReturned ? hr : TraceError(hr);
}

inline const WCHAR* BoolText(BOOL bValue)
{
    return bValue ? OLESTR("TRUE") : OLESTR("FALSE");
}
