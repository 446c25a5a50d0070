// The connection settings that a vendor text stands for, field by field, as the extension's dialog reads them.
#pragma once

#include "values/WideText.h"

#include <string>
#include <vector>

struct RecordField
{
    const char* szName;
    long lValue;
};
inline constexpr long fieldNotSet = -1;
inline constexpr long fieldInvalid = -2;

// Nothing that the text leaves out gets the dialog's defaults, except where reading the text itself means one. Throws
// CHostError when the text is not well-formed XML. COM must be initialised on the thread.
std::vector<RecordField> ReadConnectionRecord(CWideView vendorText);

// The number, with what it means where it is no value.
std::string ValueText(long lValue);
