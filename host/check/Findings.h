// What was found in one profile, and the verdict that follows from it.
#pragma once

#include "host/ElementMap.h"
#include "host/check/CheckRules.h"

#include <optional>
#include <string>

enum class ProfilePart
{
    Profile,
    Security,
    Connection,
    Bands,
};

// A range of the profile's text.
struct TextRange
{
    std::size_t nBegin = 0;
    std::size_t nEnd = 0;
};

struct Finding
{
    const CheckRuleRow* pRule;
    ProfilePart part;
    std::string strElement;              // UTF-8; empty where it is about the file
    std::optional<TextRange> place;      // nothing where the file has no text
    std::optional<CWideString> strValue; // without keys
    std::string strAllowed;              // empty where nothing is to be said
    std::string strEffect;
};

// The value, which has been read from the element, as it may be shown: where a key stands in the element, its text without keys;
// where the element is in a key, or the value as read has one as well, nothing of it.
CWideString ValueWithoutKeys(const CElementMap& map, const XmlElement& element, const CWideString& strValue);

// At most so many units of a text, and no half of a character at its end.
CWideString Shortened(CWideString strText, std::size_t cchLongest);

class CFindings
{
public:
    explicit CFindings(const CElementMap& map) : m_map(map)
    {
    }

    struct Said
    {
        std::optional<CWideString> strValue;
        std::string strAllowed;
        std::string strEffect;
    };
    // About what stands in the element: the place is its content, or the element where that is blank.
    void AddContent(CheckRule rule, ProfilePart part, const XmlElement& element, Said said);
    // About the element itself; the place is its start tag.
    void AddElement(CheckRule rule, ProfilePart part, const XmlElement& element, Said said);
    // About an element that is not there; the place is its parent's start tag.
    void AddMissing(CheckRule rule, ProfilePart part, std::string_view name, const XmlElement& parent, Said said);

    // In the order of the text.
    std::vector<Finding> Take();

private:
    void Add(CheckRule rule, ProfilePart part, std::string_view element, TextRange place, Said said);

    const CElementMap& m_map;
    std::vector<Finding> m_findings;
};

enum class ProfileState
{
    Valid,
    Invalid,
    Unreadable,
};

struct ProfileVerdict
{
    std::string strFile;                // as it was named; UTF-8 as far as the file's name is
    CWideString strText;                // empty where there is none
    std::optional<CWideString> strName; // without keys; no longer than a valid one
    std::vector<Finding> findings;

    ProfileState State() const;
    std::size_t Count(Severity severity) const;
};

// What a finding says: "MaxOffChannelTimeMs is 60, allowed 10 to 50: all settings become the defaults".
std::string Sentence(const Finding& finding);

const char* PartName(ProfilePart part);
// As messages have it: what is unreadable is an error too.
const char* SeverityName(Severity severity);
const char* StateName(ProfileState state);
