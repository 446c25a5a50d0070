// How a profile is laid out (line ends, indentation, or everything on one line), and new elements in the same manner.
#pragma once

#include "host/ElementMap.h"

#include <vector>

// An element to be written: with a text or with children. One without a name is just its text (markup of its own).
struct NewElement
{
    CWideString strName;
    CWideString strText;
    std::vector<NewElement> children;
};

CWideString QualifiedName(CWideView prefix, CWideView localName);

class CProfileLayout
{
public:
    // The map is borrowed.
    explicit CProfileLayout(const CElementMap& map);

    // The profile's text with new children in the element: behind the child that is named, or before everything else.
    CWideString Insert(const XmlElement& parent, const XmlElement* pAfter, const std::vector<NewElement>& children) const;

    // The text with line ends as the profile has them.
    CWideString WithOwnLineEnds(CWideView text) const;

private:
    CWideView BreakBefore(const XmlElement& element) const;
    CWideString Deeper(CWideView strBreak) const;
    void Write(const NewElement& element, CWideView strBreak, CWideString& strText) const;

    const CElementMap& m_map;
    CWideView m_lineEnd;     // empty when the profile is one line
    CWideString m_strIndent; // of one level
};
