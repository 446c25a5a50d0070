// Questions to an XML text, put to the platform's document component.
#pragma once

#include "host/ComOwners.h"

#include <msxml2.h>

// The text as a document. Throws CHostError, with the component's reason, when it does not load. COM must be initialised
// on the thread.
CUniqueInterface<IXMLDOMDocument> LoadXml(CWideView text);

class CXmlQuery
{
public:
    // Throws as LoadXml.
    explicit CXmlQuery(CWideView text) : m_document(LoadXml(text))
    {
    }

    // The first element of the path; nothing when there is none. Paths name elements as they are written.
    std::optional<CWideString> Text(CWideView path) const;
    bool Has(CWideView path) const
    {
        return Text(path).has_value();
    }

private:
    CUniqueInterface<IXMLDOMDocument> m_document;
};
