// A profile in the eyes of the platform's XML document component.
#pragma once

#include "values/WideText.h"

// Holds the text against the component: it has to load without a document type, with at most 4,000 attributes in an
// element and 200,000 tags and attributes in all, its root has to be a WLANProfile, and the profile's name a text without
// elements. Returns that name (empty when it has none). Throws CHostError. COM must be initialised on the thread.
CWideString CheckProfileDocument(const CWideString& strText);

// Throws CHostError for a text with more attributes and tags than that: components take a long time over them.
void RequireModerateMarkup(CWideView text);
