// Results of COM calls in front of the user.
#pragma once

#include <windows.h>

#include <string>

// "E_FAIL (0x80004005)"; the number alone where there is no name for it here.
std::string ResultName(HRESULT hr);

// Throws CHostError, naming the call, when the result is a failure.
void RequireSuccess(HRESULT hr, const char* szCall);
