// Where a text stops being a document, in words for the person who wrote it.
#pragma once

#include "host/check/Findings.h"

struct DocumentFault
{
    TextRange place;
    std::string strReason;
};

// The first fault of a text that a document component refuses; nothing when it is none of those that people make.
std::optional<DocumentFault> FindFault(CWideView text);
