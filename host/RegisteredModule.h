// Where the registry has the module.
#pragma once

#include <string>

// The file behind the module's class, as UTF-8. Throws CHostError when the class is not registered.
std::string RegisteredModuleFile();
