// The running test program, started again by cases that need a second process or another place to run in.
#pragma once

#include <filesystem>
#include <string>

namespace tests
{
// The program's file, as the standard library takes it.
std::filesystem::path ProgramFile();

// Runs one case of a test program, a disabled one too, and waits for its end; true when the case passed. The case gets
// this process's environment.
bool RunCase(const std::filesystem::path& program, const std::string& name);
} // namespace tests
