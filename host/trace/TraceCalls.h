// The calls that a trace log tells of: the lines of one thread from an operation's first to the next operation's.
#pragma once

#include "host/trace/TraceMessages.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

// A call, or a part of one whose beginning was handed out before.
struct TraceCall
{
    std::string strOperation; // empty when the log does not have the call's beginning
    std::uint32_t nTime = 0;  // of the first of the lines, in milliseconds since midnight
    std::uint32_t nThread = 0;
    bool bGoesOn = false;
    bool bFailed = false;
    std::vector<std::string> lines;
    std::size_t cbLines = 0;
};

// Whether a line of a message tells of an error.
bool IsTraceError(std::string_view line);

class CTraceCalls
{
public:
    using Taker = std::function<void(const TraceCall&)>;

    explicit CTraceCalls(Taker taker);
    void Add(const TraceMessage& message);
    // Hands out what there is of each call, or of those that failed; later lines go on with it.
    void Pause(bool bOnlyFailed = false);

private:
    struct OpenCall
    {
        TraceCall call;
        std::uint64_t nLastMessage = 0;
        bool bHasNews = false;
    };
    void HandOut(OpenCall& open);
    void LetGo();

    Taker m_taker;
    std::map<std::uint32_t, OpenCall> m_open; // by thread
    std::uint64_t m_cMessages = 0;
};
