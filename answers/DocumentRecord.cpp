#include "answers/DocumentGenerator.h"
#include "answers/Subjects.h"

#include "extui/SecurityPropertyInfo.h"
#include "host/HostError.h"
#include "host/Module.h"
#include "profile/CCXConnectionSettings.h"
#include "profile/CCXSecuritySettings.h"
#include "profile/WlanProfileBands.h"

#include <memory>

namespace answers
{
namespace
{
std::string ShownModification(HRESULT hr, BOOL bIsModified, const CBstr& bstrModified)
{
    std::string shown = ShownHex(static_cast<std::uint32_t>(hr)) + " modified " + std::to_string(bIsModified);
    if (bstrModified)
        shown += " " + Shown(bstrModified.View());
    return shown;
}

// As text: the whole of it, up to the end that both have in common.
std::string ShownSettings(const CCXConnectionSettings& settings)
{
    std::string shown;
    for (const LONG lField :
         {settings.radioMeasurement, settings.locationBasedServices, settings.clientReporting, settings.authorizedProfile,
          settings.rapido, settings.advancedRoaming, settings.roamingOption, settings.maxOffChannelTimeMs,
          settings.minOnChannelTimeMs, settings.keepAliveEnabled, settings.keepAlivePeriod, settings.diagnosticSsidLength})
        shown += std::to_string(lField) + " ";
    for (LONG i = 0; i < settings.diagnosticSsidLength; ++i)
        shown += ShownHex(settings.diagnosticSsid[i]).substr(8);
    return shown + (settings.IsValid() ? " valid" : " invalid");
}

class CDocumentRecorder
{
public:
    explicit CDocumentRecorder(CRecord& record)
        : m_record(record), m_security(Create<ICCXExtUIKey>(IID_ICCXExtUIKey)),
          m_connection(Create<ICCXExtUICon>(IID_ICCXExtUICon))
    {
        if (FAILED(m_security.Get()->Initialize(&SecurityPropertyInfos()[0])))
            throw CHostError("the security property does not take its description");
    }

    void Record(const Document& document)
    {
        m_record.Add("text", Shown(document.text));
        switch (document.kind)
        {
        case DocumentKind::Security:
            RecordSecurity(document.text);
            break;
        case DocumentKind::Connection:
            RecordConnection(document.text);
            break;
        case DocumentKind::Wireless:
            RecordBands(document.text);
            break;
        }
    }

private:
    template <class Interface>
    CComRef<Interface> Create(REFIID riid) const
    {
        CComRef<Interface> object;
        if (FAILED(m_module.ClassFactory().Get()->CreateInstance(nullptr, riid, reinterpret_cast<void**>(object.Put()))))
            throw CHostError("the module hands out no object");
        return object;
    }

    void RecordSecurity(const CWideString& text)
    {
        const CBstr bstrProfile(text.c_str());
        const CCXSecuritySettings settings(bstrProfile.Get());
        m_record.Add("record", ShownHex(settings.auth) + " " + ShownHex(settings.cipher));
        RecordSelected(*m_security.Get(), bstrProfile);

        ULONG uDefault = 0;
        HRESULT hr =
            m_security.Get()->Dot11ExtUIPropertyGetDisplayInfo(0, bstrProfile.Get(), nullptr, nullptr, &uDefault, nullptr);
        m_record.Add("default", ShownHex(static_cast<std::uint32_t>(hr)) + " " + std::to_string(uDefault));

        Dot11ExtUIPropertyEntry aes{4, 0, nullptr};
        CBstr bstrModified;
        BOOL bIsModified = FALSE;
        hr = m_security.Get()->Dot11ExtUIPropertySetDisplayInfo(0, bstrProfile.Get(), nullptr, &aes, bstrModified.Put(),
                                                                &bIsModified);
        m_record.Add("pick", ShownModification(hr, bIsModified, bstrModified));
    }

    void RecordConnection(const CWideString& text)
    {
        const CBstr bstrProfile(text.c_str());
        const CCXConnectionSettings settings(bstrProfile.Get());
        m_record.Add("record", ShownSettings(settings));
        CBstr bstrWritten;
        *bstrWritten.Put() = settings.Serialise();
        m_record.Add("written", Shown(bstrWritten.View()));
        RecordSelected(*m_connection.Get(), bstrProfile);
    }

    void RecordSelected(IDot11ExtUIProperty& property, const CBstr& bstrProfile)
    {
        BOOL bIsSelected = FALSE;
        HRESULT hr = property.Dot11ExtUIPropertyGetSelected(bstrProfile.Get(), nullptr, &bIsSelected);
        m_record.Add("selected", ShownHex(static_cast<std::uint32_t>(hr)) + " " + std::to_string(bIsSelected));
        CBstr bstrModified;
        BOOL bIsModified = FALSE;
        hr = property.Dot11ExtUIPropertySetSelected(bstrProfile.Get(), nullptr, bstrModified.Put(), &bIsModified);
        m_record.Add("select", ShownModification(hr, bIsModified, bstrModified));
    }

    void RecordBands(const CWideString& text)
    {
        auto bands = bandsNotRead;
        const bool bRead = ReadProfileBands(text.c_str(), &bands);
        m_record.Add("bands", std::to_string(bRead) + " " + std::to_string(bands));
        for (const auto choice : {bands24GHz, bands5GHz, bandsBoth})
        {
            auto* szProfile = new WCHAR[text.size() + 1];
            szProfile[text.copy(szProfile, text.size())] = WCHAR{};
            const bool bWritten = WriteProfileBands(&szProfile, choice);
            const std::unique_ptr<WCHAR[]> owner(szProfile);
            m_record.Add("bands " + std::to_string(choice), std::to_string(bWritten) + " " + Shown(CWideView(szProfile)));
        }
    }

    CRecord& m_record;
    const CComApartment m_apartment;
    const CLoadedModule m_module{std::string()};
    const CComRef<ICCXExtUIKey> m_security;
    const CComRef<ICCXExtUICon> m_connection;
};
} // namespace

void RecordDocuments(CRecord& record, std::uint32_t uSeed, unsigned nCount)
{
    CDocumentRecorder recorder(record);
    CDocumentGenerator generator(uSeed);
    for (unsigned i = 0; i < nCount; ++i)
    {
        record.About("document " + std::to_string(i));
        recorder.Record(generator.Next());
    }
}
} // namespace answers
