// The messages of a trace log, one after the other as they were written, whatever the pieces are in which the file is read.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

struct TraceMessage
{
    std::uint64_t nOffset = 0; // where it begins in the file, in bytes
    std::uint32_t nTime = 0;   // milliseconds since midnight; a line has no date
    std::uint32_t nThread = 0;
    std::string_view text; // without line ends behind it
};

class CTraceMessages
{
public:
    using Taker = std::function<void(const TraceMessage&)>;

    // The first byte to come is the one at nOffset of the file.
    explicit CTraceMessages(Taker taker, std::uint64_t nOffset = 0);
    // Hands out each message that is followed by another.
    void Feed(std::string_view bytes);
    // Hands out what is held. Text that comes later without a beginning of its own goes on with this message.
    void Finish();
    // What comes is another file's, from its first byte on.
    void BeginAnew();
    // Whether what is held ends with a line's end, and not within a line that is being written.
    bool HoldsWholeLines() const
    {
        return m_strHeld.ends_with('\n');
    }
    // Whether there was a message at all.
    bool HasAny() const
    {
        return m_bHasAny;
    }

private:
    void HandOut(std::size_t cbMessage);

    Taker m_taker;
    std::string m_strHeld; // from the beginning of the message that is not handed out yet
    std::size_t m_nSearched = 0;
    TraceMessage m_current;
    bool m_bWithin = false; // a message of this file has begun
    bool m_bHasAny = false;
};
