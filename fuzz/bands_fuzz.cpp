// Reading and rewriting the bands of a wireless profile.
#include "fuzz/FuzzText.h"

#include "profile/WlanProfileBands.h"
#include "profile/XmlDocument.h"

#include <memory>

namespace
{
// Everything but the connectivity section, as the document component writes it.
CWideString Remainder(const WCHAR* szProfile)
{
    CXmlDocument document;
    if (!document.Load(szProfile))
        return {};
    const CXmlNode root = document.Root();
    const CXmlNode section = root.Select(OLESTR("/WLANProfile/MSM"));
    if (const CXmlNode connectivity = section.Select(OLESTR("/WLANProfile/MSM/connectivity")))
        section.Remove(connectivity);
    return CWideString(document.Xml().View());
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t cbData)
{
    if (cbData == 0)
        return 0;
    PrepareProcess();
    const auto choice = static_cast<WlanProfileBands>(pData[0] % 3 + 1);
    const CWideString text = TextFrom(pData + 1, cbData - 1);
    auto bands = bandsNotRead;
    ReadProfileBands(text.c_str(), &bands);

    auto* szProfile = new WCHAR[text.size() + 1];
    szProfile[text.copy(szProfile, text.size())] = WCHAR{};
    const bool bWritten = WriteProfileBands(&szProfile, choice);
    const std::unique_ptr<WCHAR[]> owner(szProfile);
    if (!bWritten)
        return 0;
    // A declaration of the profile's own may be what was taken out.
    const CWideString remainder = Remainder(text.c_str());
    if (remainder.find(OLESTR(" xmlns=\"\"")) != CWideString::npos)
        return 0;
    Require(ReadProfileBands(szProfile, &bands) && bands == choice, "the choice reads back");
    Require(Remainder(szProfile) == remainder, "everything else is as it was");
    return 0;
}
