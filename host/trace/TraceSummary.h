// How often each operation of a trace log was called, with what it was asked, and which errors it met.
#pragma once

#include "host/trace/TraceCalls.h"

#include <map>
#include <string>

class CTraceSummary
{
public:
    void Add(const TraceCall& call);
    std::string Text() const;

private:
    struct Operation
    {
        std::size_t cCalls = 0;
        std::map<std::string, std::size_t> asked;
        std::map<std::string, std::size_t> errors;
    };
    std::map<std::string, Operation> m_operations;
};
