// What a program is answered on one platform, a line for each question, so that two platforms can be held side by side.
#pragma once

#include "answers/Shown.h"

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

} // namespace answers
