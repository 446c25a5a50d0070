// What ends a command with one line on standard error.
#pragma once

#include "host/FileNames.h"
#include "values/Utf8Text.h"

#include <stdexcept>
#include <string>
#include <utility>

// A refusal, worded for the person at the terminal. Exit code 1.
class CHostError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

// Standard output takes no more: nobody is left to whom anything could be told.
class COutputClosed : public CHostError
{
public:
    COutputClosed() : CHostError("standard output cannot be written")
    {
    }
};

// "error 5 (access is denied)": an error of the platform's, with its meaning where a person can do something about it.
std::string ErrorText(DWORD dwError);

// Runs the body; a refusal from it gets the name of what it is about in front.
template <class Body>
auto Naming(const std::string& strName, Body body)
{
    try
    {
        return body();
    }
    catch (const CHostError& error)
    {
        throw CHostError(strName + ": " + error.what());
    }
}

template <class Body>
auto NamingFile(const std::filesystem::path& file, Body body)
{
    return Naming(NameOf(file), std::move(body));
}
