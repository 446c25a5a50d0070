// A profile in a file, judged.
#pragma once

#include "host/check/Findings.h"

#include <filesystem>

// Never throws for what is wrong with the file: that is the verdict. COM must be initialised on the thread.
ProfileVerdict CheckProfile(const std::filesystem::path& file);
// The same for what a file holds, or would hold; the title stands in the place of its name.
ProfileVerdict CheckProfile(std::string strTitle, std::string_view bytes);
