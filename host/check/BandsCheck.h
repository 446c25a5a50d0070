// The bands of a profile, which stand in the platform's own part of it.
#pragma once

#include "host/check/Findings.h"
#include "profile/XmlDocument.h"

// The document is that of the map's text.
void CheckBands(const CElementMap& map, const CXmlDocument& document, CFindings& findings);
