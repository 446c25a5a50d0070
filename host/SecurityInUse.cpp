#include "host/SecurityInUse.h"

#include "host/Extension.h"
#include "host/PropertyKinds.h"
#include "host/StandardSecurity.h"
#include "profile/CCXSecuritySettings.h"
#include "values/Utf8Text.h"

namespace
{
std::string With(CWideView authentication, CWideView cipher)
{
    if (authentication.empty())
        return "nothing that is named";
    return Utf8Of(authentication) + (cipher.empty() ? "" : " with " + Utf8Of(cipher));
}

// What a whole record names that is none of the property's.
std::string NameOfOther(const CWideString& strVendorText)
{
    const CCXSecuritySettings settings(strVendorText.c_str());
    const auto* pAuthentication = CCXSecurityTokens::Find(CCXSecurityTokens::authentication, settings.auth);
    const auto* pCipher = CCXSecurityTokens::Find(CCXSecurityTokens::cipher, settings.cipher);
    return With(pAuthentication ? pAuthentication->szName : CWideView(), pCipher ? pCipher->szName : CWideView());
}
} // namespace

SecurityInUse SecurityInUseOf(IDot11ExtUI& root, const CProfile& profile)
{
    const std::optional<CWideString> strVendorText = profile.VendorText(VendorPlace::Security);
    if (!strVendorText)
    {
        const StandardSecurity standard = StandardSecurityOf(profile.Text());
        return {false, false, With(standard.strAuthentication, standard.strEncryption)};
    }
    CConnectionContext context(profile.ProfileName());
    for (const CProperty& property : Properties(root, propertyKindSecurity))
    {
        if (!property.IsSelected(strVendorText, context).value_or(false))
            continue;
        const auto answer = property.Entries(strVendorText, context);
        const bool bHasDefault = answer && answer->uDefault < answer->entries.size();
        return {true, true, With(property.Name(), bHasDefault ? TextOf(*answer->entries[answer->uDefault]) : CWideView())};
    }
    return {true, false, NameOfOther(*strVendorText)};
}
