// Files of every kind to ask about, made anew for each question, and the parts of what is asked about files.
#pragma once

#include "answers/Record.h"

namespace answers
{
class CFileFixture
{
public:
    // Below the folder: "file" and "other" with 10 bytes each, "readonly" with 4, "folder", and "full" with a file in it.
    explicit CFileFixture(const std::filesystem::path& folder);
    ~CFileFixture();
    CFileFixture(const CFileFixture&) = delete;
    CFileFixture& operator=(const CFileFixture&) = delete;

    // What a name stands for as the platform takes it: in the fixture's folder. A null stays null and an empty one empty.
    const WCHAR* Place(const WCHAR* szName);
    // Every name in the fixture's folder with the size of its file, in order; two rows can be compared by it.
    std::string Shown() const;

private:
    const std::filesystem::path m_path;
    CWideString m_folderName;
    CWideString m_places[2]; // of the last two names asked for
    unsigned m_uNext = 0;
};

// Reading, writing and moving in open files.
void RecordOpenFiles(CRecord& record, const std::filesystem::path& folder);
// What takes names: deleting, moving, making, asking.
void RecordFileNames(CRecord& record, const std::filesystem::path& folder);
// The run-time's streams and rights.
void RecordStreams(CRecord& record, const std::filesystem::path& folder);
} // namespace answers
