#include "host/Refusals.h"

#include "host/Shown.h"

#include <iostream>

void TellRefusal(const char* szReason)
{
    std::cerr << "korihost: " << Shown(szReason) << "\n";
}
