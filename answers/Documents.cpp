#include "answers/Answers.h"

#include "answers/Question.h"
#include "answers/Shown.h"
#include "extui/SecurityPropertyInfo.h"
#include "host/HostError.h"
#include "host/Module.h"
#include "profile/CCXConnectionSettings.h"
#include "profile/CCXSecuritySettings.h"
#include "tests/support/BandsRewrite.h"

namespace answers
{
namespace
{
std::string ShownModification(HRESULT hr, BOOL bIsModified, const CBstr& bstrModified)
{
    std::string shown = ShownHex(hr) + " modified " + std::to_string(bIsModified);
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
    if (settings.diagnosticSsidLength > 0)
        shown += ShownBytes(
            {reinterpret_cast<const char*>(settings.diagnosticSsid), static_cast<std::size_t>(settings.diagnosticSsidLength)});
    return shown + (settings.IsValid() ? " valid" : " invalid");
}

class CDocumentRecorder
{
public:
    explicit CDocumentRecorder(std::ostream& record)
        : m_record(record), m_security(Create<ICCXExtUIKey>(IID_ICCXExtUIKey)),
          m_connection(Create<ICCXExtUICon>(IID_ICCXExtUICon))
    {
        if (FAILED(m_security.Get()->Initialize(&SecurityPropertyInfos()[0])))
            throw CHostError("the security property does not take its description");
    }

    void Record(const std::string& kind, const CWideString& text)
    {
        m_record << Shown(text);
        if (kind == "security")
            RecordSecurity(text);
        else if (kind == "connection")
            RecordConnection(text);
        else
            RecordBands(text);
        m_record << '\n';
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

    void Add(const std::string& question, const std::string& answer)
    {
        m_record << '\t' << question << " -> " << answer;
    }

    void RecordSecurity(const CWideString& text)
    {
        const CBstr bstrProfile(text.c_str());
        const CCXSecuritySettings settings(bstrProfile.Get());
        Add("record", ShownHex(settings.auth) + " " + ShownHex(settings.cipher));
        RecordSelected(*m_security.Get(), bstrProfile);

        ULONG uDefault = 0;
        HRESULT hr =
            m_security.Get()->Dot11ExtUIPropertyGetDisplayInfo(0, bstrProfile.Get(), nullptr, nullptr, &uDefault, nullptr);
        Add("default", ShownHex(hr) + " " + std::to_string(uDefault));

        Dot11ExtUIPropertyEntry aes{4, 0, nullptr};
        CBstr bstrModified;
        BOOL bIsModified = FALSE;
        hr = m_security.Get()->Dot11ExtUIPropertySetDisplayInfo(0, bstrProfile.Get(), nullptr, &aes, bstrModified.Put(),
                                                                &bIsModified);
        Add("pick", ShownModification(hr, bIsModified, bstrModified));
    }

    void RecordConnection(const CWideString& text)
    {
        const CBstr bstrProfile(text.c_str());
        const CCXConnectionSettings settings(bstrProfile.Get());
        Add("record", ShownSettings(settings));
        CBstr bstrWritten;
        *bstrWritten.Put() = settings.Serialise();
        Add("written", Shown(bstrWritten.View()));
        RecordSelected(*m_connection.Get(), bstrProfile);
    }

    void RecordSelected(IDot11ExtUIProperty& property, const CBstr& bstrProfile)
    {
        BOOL bIsSelected = FALSE;
        HRESULT hr = property.Dot11ExtUIPropertyGetSelected(bstrProfile.Get(), nullptr, &bIsSelected);
        Add("selected", ShownHex(hr) + " " + std::to_string(bIsSelected));
        CBstr bstrModified;
        BOOL bIsModified = FALSE;
        hr = property.Dot11ExtUIPropertySetSelected(bstrProfile.Get(), nullptr, bstrModified.Put(), &bIsModified);
        Add("select", ShownModification(hr, bIsModified, bstrModified));
    }

    void RecordBands(const CWideString& text)
    {
        auto bands = bandsNotRead;
        const bool bRead = ReadProfileBands(text.c_str(), &bands);
        Add("bands", std::to_string(bRead) + " " + std::to_string(bands));
        for (const auto choice : {bands24GHz, bands5GHz, bandsBoth})
        {
            CWideString profile = text;
            const bool bWritten = tests::RewriteBands(profile, choice);
            Add("bands " + std::to_string(choice), std::to_string(bWritten) + " " + Shown(profile));
        }
    }

    std::ostream& m_record;
    const CComApartment m_apartment;
    const CLoadedModule m_module{std::string()};
    const CComRef<ICCXExtUIKey> m_security;
    const CComRef<ICCXExtUICon> m_connection;
};
} // namespace

void RecordDocuments(std::istream& documents, std::ostream& record)
{
    CDocumentRecorder recorder(record);
    for (std::string line; std::getline(documents, line);)
    {
        CQuestion document(line);
        const std::string kind = document.Word();
        recorder.Record(kind, document.Text());
    }
}
} // namespace answers
