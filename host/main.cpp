// korihost: plays the platform's wireless-profile pages on a profile file.
#include "host/CommandLine.h"

int main(int argc, char** argv)
{
    return RunCommandLine(argc, argv, PROGRAM_VERSION);
}
