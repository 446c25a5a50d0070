#include "host/AdapterTable.h"

#include "host/BandsName.h"
#include "host/HostError.h"
#include "host/KeyMask.h"
#include "host/Table.h"
#include "profile/XmlDocument.h"

#include <algorithm>
#include <cstring>

namespace
{
// The queries that the adapters' drivers are asked.
constexpr DWORD vendorDescription = 0x0001010D;
constexpr std::size_t cbMostDescription = 104;
constexpr DWORD rapidoCapability = 0xFF000040;
constexpr DWORD cbRapidoPayload = 8;
constexpr const char* makersName = "Korvane";

struct PhyName
{
    unsigned uType;
    const char* szName;
};
constexpr PhyName phyNames[] = {
    {4, "OFDM (802.11a, 5 GHz)"}, {5, "HR/DSSS (802.11b)"}, {6, "ERP (802.11g, 2.4 GHz)"}, {7, "HT (802.11n)"}};

std::string PhyText(const std::vector<unsigned>& types)
{
    std::string strText;
    for (const unsigned uType : types)
    {
        std::string strName = "type " + std::to_string(uType);
        for (const PhyName& row : phyNames)
            if (row.uType == uType)
                strName = row.szName;
        strText += (strText.empty() ? "" : ", ") + strName;
    }
    return strText.empty() ? "none" : strText;
}

std::string RapidoText(const std::string& strAnswer)
{
    if (strAnswer.empty())
        return "no answer";
    DWORD dwRapido = 0;
    std::memcpy(&dwRapido, strAnswer.data(), std::min(sizeof(dwRapido), strAnswer.size()));
    return std::to_string(dwRapido) + (dwRapido != 0 ? " (offered)" : " (not offered)");
}

std::string AdapterRows(const CWlanService& service, const WlanAdapter& adapter, bool bChosen)
{
    const std::string strVendor = service.AskDriver(adapter.guid, vendorDescription, 0, cbMostDescription);
    const std::string strDescription = strVendor.substr(0, strVendor.find('\0'));
    const bool bMakers = strDescription.find(makersName) != std::string::npos;
    return "\n" + Row("Adapter", TextOf(adapter.guid) + (bChosen ? "  (chosen)" : "")) +
           Row("  description", adapter.strDescription) + Row("  PHY types", PhyText(service.PhyTypes(adapter.guid))) +
           Row("  driver's vendor", strDescription.empty() ? "no answer" : strDescription) +
           Row("  of the maker's", bMakers ? "yes" : "no") +
           Row("  Rapido", bMakers
                               ? RapidoText(service.AskDriver(adapter.guid, rapidoCapability, cbRapidoPayload, sizeof(DWORD) * 2))
                               : "not asked");
}

// What the dialog takes for the profile's bands, and the texts that it makes that of.
std::string BandsText(const CWideString& strProfile)
{
    CXmlDocument document;
    document.Load(WithoutKeys(strProfile).c_str());
    const auto strTypes = document.Root().Select(OLESTR("/WLANProfile/MSM/connectivity")).TextOfElements();
    return BandsName(strProfile) +
           (strTypes.value_or(CWideString()).empty() ? "  (none written)" : "  (written: " + Utf8Of(*strTypes) + ")");
}
} // namespace

std::string AdapterTable(const CWlanService& service, const std::optional<GUID>& chosen, const CWideString& strProfile)
{
    std::string strTable;
    for (const WlanAdapter& adapter : service.Adapters())
        strTable += AdapterRows(service, adapter, chosen && IsEqualGUID(*chosen, adapter.guid));
    if (strTable.empty())
        strTable = "\n" + Row("Adapter", "none");
    if (!chosen)
        return strTable;
    service.Adapter(*chosen);
    const auto stored = service.Profile(*chosen, strProfile);
    return strTable + "\n" + Row("Stored profile", stored ? Utf8Of(strProfile) : "none of the name " + Utf8Of(strProfile)) +
           (stored ? Row("  bands", BandsText(stored->strText)) : std::string());
}
