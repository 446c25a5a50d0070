#include "host/BandsName.h"

#include "profile/WlanProfileBands.h"

std::string BandsName(const CWideString& strProfile)
{
    // In the order of their values: of what names neither band, both are allowed.
    constexpr const char* names[] = {"5 GHz and 2.4 GHz", "2.4 GHz", "5 GHz", "5 GHz and 2.4 GHz"};
    WlanProfileBands bands = bandsNotRead;
    ReadProfileBands(strProfile.c_str(), &bands);
    return names[bands];
}
