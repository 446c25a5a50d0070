// The part of what is asked about formats that turns texts into bytes, identifiers and back.
#pragma once

#include "answers/Record.h"

namespace answers
{
void RecordTextConversions(CRecord& record);
}
