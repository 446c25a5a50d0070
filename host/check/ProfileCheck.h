// A profile in a file, judged.
#pragma once

#include "host/check/Findings.h"

#include <filesystem>

// Never throws for what is wrong with the file: that is the verdict. COM must be initialised on the thread.
ProfileVerdict CheckProfile(const std::filesystem::path& file);
