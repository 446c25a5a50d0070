// File descriptors of the C run-time, and what reading files and the output split need of each system.
#pragma once

#include "values/Unique.h"

#include <filesystem>
#include <string>
#include <unistd.h>

struct CDescriptorCloser
{
    using Handle = int;
    static int Empty()
    {
        return -1;
    }
    static void Close(int nDescriptor)
    {
        close(nDescriptor);
    }
};
using CUniqueDescriptor = CUnique<CDescriptorCloser>;

// A second descriptor of standard output, which takes UTF-8 and line ends as they are given. Empty when it is closed.
CUniqueDescriptor KeepStandardOutput();

// The same of standard input.
CUniqueDescriptor KeepStandardInput();

// How many names (hard links) the file that is open has.
unsigned long NamesOf(const CUniqueDescriptor& descriptor);

// Files that take the module's lines, begun anew: of a name (the null device for an empty one), and one that goes with the
// descriptor. Empty, with errno, when they cannot be made; OpenTemporaryTrace throws CHostError when there is no folder for it.
CUniqueDescriptor OpenTraceFile(const std::string& strFile);
CUniqueDescriptor OpenTemporaryTrace();

// Bytes as they are; waits for nobody. Empty, with errno, when the file cannot be opened.
CUniqueDescriptor OpenForReading(const std::filesystem::path& file);
