// What the output split needs of the system.
#pragma once

#include <memory>
#include <string>
#include <string_view>

class IOutputStreams
{
public:
    // Gives standard output back.
    virtual ~IOutputStreams() = default;

    // To what was standard output; false when not everything could be written.
    virtual bool Write(std::string_view text) = 0;
    // What was printed on standard output since the last call; always empty unless the trace is to be shown.
    virtual std::string TakeTrace() = 0;
};

// Points the C run-time's standard output at the trace: a file of this name, begun anew; a temporary one for "-"; the
// null device for an empty name. Throws CHostError.
std::unique_ptr<IOutputStreams> SplitStandardOutput(const std::string& strTrace);
