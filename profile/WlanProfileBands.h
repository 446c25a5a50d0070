// The bands that a Windows wireless profile allows: the phyType elements in its connectivity section.
//
// Profile texts are zero-terminated arrays of UTF-16 code units made with new[], the caller's. Nothing is traced.
#pragma once

#include "profile/XmlDocument.h"

enum WlanProfileBands : DWORD
{
    bandsNotRead = 0, // no connectivity section, or an empty one
    bands24GHz = 1,
    bands5GHz = 2,
    bandsBoth = 3,
};

// Reads the choice. True when *pBands was set; false, with *pBands as it was, when the text does not load or its section
// names neither band. Throws std::bad_alloc.
bool ReadProfileBands(const WCHAR* szProfile, WlanProfileBands* pBands);
// The same for a document that has loaded.
bool ReadProfileBands(const CXmlDocument& document, WlanProfileBands* pBands);

// Rewrites the text for a choice other than bandsNotRead: *pszProfile is freed and receives the new array. False when
// the text does not load (it then stays as it was) or has no place for the choice (the rewritten text is then not to
// be stored). Throws std::bad_alloc, with *pszProfile as it was.
bool WriteProfileBands(WCHAR** pszProfile, WlanProfileBands bands);
