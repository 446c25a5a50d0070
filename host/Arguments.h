// The program's arguments as UTF-8, the program's own name first.
#pragma once

#include <string>
#include <vector>

std::vector<std::string> ProgramArguments(int argc, char** argv);
