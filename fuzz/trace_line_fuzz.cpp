// Forming and narrowing a line of the trace log.
#include "fuzz/FuzzText.h"

#include "trace/KorCmnTracer.h"
#include "trace/LogLine.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t cbData)
{
    // Long enough, now and then, to be cut.
    CWideString text = TextFrom(pData, cbData);
    if (cbData != 0 && pData[0] % 4 == 0 && !text.empty())
    {
        while (text.size() < 2100)
            text += CWideString(text);
    }
    const CLogLine line(OLESTR("Ihvui"), text.c_str());
    Require(static_cast<bool>(line), "there is a line");
    const CWideView formed(line.Text());
    Require(formed.size() <= KorCmnTracer::maxLineLength, "a line is bounded");
    const bool bCut = !formed.ends_with(text);
    Require(!bCut || (formed.size() == KorCmnTracer::maxLineLength && formed.ends_with(OLESTR("...\n"))), "a cut line says so");

    const CNarrowLine narrow(line.Text());
    const bool bFits = std::all_of(formed.begin(), formed.end(), [](WCHAR ch) { return ch <= 0xFF; });
    Require(narrow.Text().size() == (bFits ? formed.size() : 0), "a line is narrowed whole or not at all");
    return 0;
}
