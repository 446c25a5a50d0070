// The bands of a wireless profile rewritten, by way of the buffer that the operation takes and gives.
#pragma once

#include "profile/WlanProfileBands.h"
#include "values/WideText.h"

#include <memory>

namespace tests
{
inline bool RewriteBands(CWideString& profile, WlanProfileBands bands)
{
    auto owner = std::make_unique<WCHAR[]>(profile.size() + 1);
    profile.copy(owner.get(), profile.size());
    WCHAR* szProfile = owner.release();
    const bool bWritten = WriteProfileBands(&szProfile, bands);
    owner.reset(szProfile);
    profile = szProfile;
    return bWritten;
}
} // namespace tests
