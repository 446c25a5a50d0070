// The program's own standard output: UTF-8, as it is given.
#pragma once

#include "host/Descriptors.h"

#include <string_view>

class CStandardOutput
{
public:
    // Throws CHostError when it is closed.
    CStandardOutput();
    int Descriptor() const
    {
        return m_descriptor.Get();
    }
    // False when not all of the text could be written.
    bool Write(std::string_view text) const;
    // Whether a person sees it who has nothing against colours.
    bool WantsColours() const;

private:
    CUniqueDescriptor m_descriptor;
};
