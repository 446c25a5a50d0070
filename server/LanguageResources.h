// The search for the language resource file.
#pragma once

#include <windows.h>

// Loads the file of the user's language, taken relative to the current directory and then to the system directory, or
// else the English one; null when there is none, and the module's own resources serve. Called while the module is being
// loaded; the current directory is restored.
HMODULE LoadLanguageResources();
