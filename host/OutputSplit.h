// The program's own output, kept apart from what the module prints: the module echoes its trace to the C run-time's
// standard output, which it shares with the program.
#pragma once

#include "host/StandardOutput.h"

#include <string_view>

class COutputSplit
{
public:
    // From here on the module's lines go to the trace file, which is begun anew; to this program's output, each with
    // "trace: " in front, when the name is "-"; to nowhere when it is empty. Throws CHostError.
    explicit COutputSplit(const std::string& strTrace);
    // Gives standard output back.
    ~COutputSplit();
    COutputSplit(const COutputSplit&) = delete;
    COutputSplit& operator=(const COutputSplit&) = delete;

    // Writes UTF-8 to the program's own output, behind the trace lines so far, without control characters but line feeds and
    // tabs. Throws CHostError.
    void Write(std::string_view text);
    // The same for what another program is to read, as it is.
    void WriteBytes(std::string_view bytes);
    // Whether the program's own output leads to a person.
    bool IsSeen() const;
    // Takes what the module has printed since the trace was last shown or taken, without keys; always empty unless the name
    // is "-".
    std::string TakeTrace();

private:
    bool ShowTrace();

    bool m_bShown;
    off_t m_nTaken = 0;
    CStandardOutput m_own;
    CUniqueDescriptor m_trace;
};
