#include "host/Arguments.h"

std::vector<std::string> ProgramArguments(int argc, char** argv)
{
    return {argv, argv + argc};
}
