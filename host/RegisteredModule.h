// Where the registry has the module.
#pragma once

#include "values/WideText.h"

// The file behind the module's class, as the platform names it. Throws CHostError when the class is not registered.
CWideString RegisteredModuleFile();
