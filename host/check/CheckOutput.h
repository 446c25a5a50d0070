// Where a report goes: standard output, as UTF-8 with line ends as they are given.
#pragma once

#include "host/Descriptors.h"

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

class CCheckOutput
{
public:
    // Throws CHostError when there is no standard output.
    CCheckOutput();

    // Throws CHostError when it takes no more.
    void Write(std::string_view text);

private:
    CUniqueDescriptor m_own;
};

// What can only be written when everything is known waits here, outside of memory.
class CSpool
{
public:
    // Throws CHostError when no temporary file can be made, or it takes no more.
    CSpool();
    void Write(std::string_view text);
    void CopyTo(CCheckOutput& output);

private:
    CUniqueDescriptor m_file;
};
