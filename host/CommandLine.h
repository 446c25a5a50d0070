// The program's command line.
#pragma once

// Runs the command that the arguments name; szVersion is what --version tells. The program's exit code: 0 done, 1 refused or
// invalid input, 2 wrong usage.
int RunCommandLine(int nArguments, char** pszArguments, const char* szVersion);
