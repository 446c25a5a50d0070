// The part of what is asked about locks that concerns mutexes.
#pragma once

#include "answers/Record.h"

namespace answers
{
void RecordMutexes(CRecord& record, const std::filesystem::path& folder);
}
