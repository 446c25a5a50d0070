// What questions are about: an empty world, made anew for each run of questions and gone without a trace.
#pragma once

#include "answers/Question.h"

#include "tests/support/TestFolder.h"
#include "values/Unique.h"

#include <deque>
#include <map>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace answers
{
class CWorld
{
public:
    CWorld();
    ~CWorld();
    CWorld(const CWorld&) = delete;
    CWorld& operator=(const CWorld&) = delete;

    // A name in the folder, which is the current one: "@" at its front stands for the folder, "path 260" for a name in it that
    // is that long in all, "%" for the program's folder.
    const WCHAR* Place(CQuestion& question);
    // ", without file=10, with new=0": what became of the folder, once no file is open.
    std::string ShownChanges() const;
    // A key that is empty at first.
    HKEY Key();
    LSTATUS CreateKey(const WCHAR* szPath);

    std::map<std::string, CUniqueFile> files;
    CUniqueKey openedKey;

private:
    const tests::CTestFolder m_folder;
    std::set<std::string> m_names;
    WCHAR m_szBefore[MAX_PATH] = {};
    WCHAR m_szFolder[MAX_PATH] = {};
    std::deque<CWideString> m_places;
    CUniqueKey m_key;
    std::vector<CWideString> m_keyPaths;
};

// A kind of question: "size A" asks what the verb "size" answers.
struct Verb
{
    const char* szName;
    std::string (*pfnAnswer)(CWorld&, CQuestion&);
};
std::span<const Verb> FileVerbs(); // with folders and locks
std::span<const Verb> RegistryVerbs();
std::span<const Verb> TextVerbs(); // with those of modules
} // namespace answers
