// A profile in the eyes of the platform's XML document component.
#pragma once

#include "values/WideText.h"

// Holds the text against the component: it has to load without a document type, and its root has to be a WLANProfile.
// Returns the profile's name (empty when it has none). Throws CHostError. COM must be initialised on the thread.
CWideString CheckProfileDocument(const CWideString& strText);
