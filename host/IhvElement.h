// The vendor's parts of a wireless profile: where their texts stand, and putting new ones there with everything else of
// the profile left as it is written.
#pragma once

#include "host/ElementMap.h"

#include <optional>

// The places below the profile's IHV element.
enum class VendorPlace
{
    Connectivity,
    Security,
};

// The CCX element in the place; null when the profile has none. An element of the name in a namespace of another's is none,
// and so is everything in an IHV element or a place of another's.
const XmlElement* VendorElement(const CElementMap& map, VendorPlace place);

// The element's text as a document of its own, with the namespace declarations that it uses from around it.
CWideString VendorText(const CElementMap& map, const XmlElement& element);

// The same for the element in the place; nothing when the profile has none. The profile must be a well-formed document.
std::optional<CWideString> VendorText(CWideView profile, VendorPlace place);

// The profile with the text in the place: in place of the CCX element that was there, or in a place made for it, laid
// out like its neighbours. Throws CHostError when the place, or what it holds, is another vendor's.
CWideString WithVendorText(CWideView profile, VendorPlace place, CWideView vendorText);
