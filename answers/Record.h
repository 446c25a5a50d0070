// What a program is answered on one platform, a line for each question, so that two platforms can be held side by side.
#pragma once

#include "values/WideText.h"

#include <windows.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

namespace answers
{
class CRecord
{
public:
    // Replaces the file. A file that cannot be written ends the program with a message.
    explicit CRecord(const std::filesystem::path& file);

    // The questions from here on are about this.
    void About(std::string_view subject);
    // One question and its answer, both in one line of 7-bit text: see Shown.
    void Add(std::string_view question, std::string_view answer);
    // All of it is on the disk; false when it is not.
    bool Finish();

private:
    std::ofstream m_file;
    std::string m_subject;
};

// Text as it can stand in a line: printing 7-bit characters as they are, all else, and the backslash, as \uXXXX.
std::string Shown(CWideView text);
std::string Shown(std::string_view bytes);
// "0x80004005": results and masks.
std::string ShownHex(std::uint64_t uValue);
// "ok" or "failed, error 2": a function that leaves its reason with GetLastError. Call at once.
std::string ShownSuccess(bool bSucceeded);
} // namespace answers
