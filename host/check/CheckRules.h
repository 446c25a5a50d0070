// What can be said of a profile: each rule with its identifier, which is never given to another one, and how its findings
// begin. docs/check.md has an example of each.
#pragma once

enum class Severity
{
    Error,      // the extension falls back to its defaults, or refuses
    Warning,    // it reads something else than the person meant
    Unreadable, // there is no profile to judge
};

enum class CheckRule
{
    CannotRead,
    NotText,
    NotWellFormed,
    DocumentType,
    NoProfile,
    ProfileName,
    OffChannelTime,
    OnChannelTime,
    KeepAlivePeriod,
    DiagnosticSsid,
    SecurityForm,
    AuthenticationToken,
    Cipher,
    TwoRoots,
    FlagText,
    NumberText,
    RoamingLevel,
    RoamingLevelMissing,
    EnabledAndDisabled,
    NeitherState,
    StateContent,
    SecondElement,
    OtherAuthentication,
    OpenBesideAuthenticating,
    HexBesideName,
    CipherPrefix,
    CckmWithoutCipher,
    UnknownElement,
    OtherEntrysElement,
    PrefixedElement,
    SsidRenamed,
    SsidDropped,
    BandReading,
    NoSecuritySection,
    EmptyNamespace,
};

struct CheckRuleRow
{
    CheckRule rule;
    Severity severity;
    const char* szId;
    const char* szSays; // behind the element's name; "{}" stands for the value, and without one for "missing"
};

inline constexpr CheckRuleRow checkRules[] = {
    {CheckRule::CannotRead, Severity::Unreadable, "cannot-read", "cannot be read"},
    {CheckRule::NotText, Severity::Unreadable, "not-text", "is not text of its encoding"},
    {CheckRule::NotWellFormed, Severity::Unreadable, "not-well-formed", "is not well-formed"},
    {CheckRule::DocumentType, Severity::Unreadable, "document-type", "has a document type declaration"},
    {CheckRule::NoProfile, Severity::Unreadable, "no-profile", "is no WLANProfile"},
    {CheckRule::ProfileName, Severity::Error, "profile-name", "is {}"},
    {CheckRule::OffChannelTime, Severity::Error, "off-channel-time", "is {}"},
    {CheckRule::OnChannelTime, Severity::Error, "on-channel-time", "is {}"},
    {CheckRule::KeepAlivePeriod, Severity::Error, "keep-alive-period", "is {}"},
    {CheckRule::DiagnosticSsid, Severity::Error, "diagnostic-ssid", "is \"{}\""},
    {CheckRule::SecurityForm, Severity::Error, "security-form", "holds neither openNetwork nor authenticatingNetwork"},
    {CheckRule::AuthenticationToken, Severity::Error, "authentication-token", "holds no known authentication"},
    {CheckRule::Cipher, Severity::Error, "cipher", "is {}"},
    {CheckRule::TwoRoots, Severity::Error, "two-roots", "stands beside CCX"},
    {CheckRule::FlagText, Severity::Warning, "flag-text", "is \"{}\""},
    {CheckRule::NumberText, Severity::Warning, "number-text", "is \"{}\""},
    {CheckRule::RoamingLevel, Severity::Warning, "roaming-level", "is {}"},
    {CheckRule::RoamingLevelMissing, Severity::Warning, "roaming-level-missing", "is {}"},
    {CheckRule::EnabledAndDisabled, Severity::Warning, "enabled-and-disabled", "stands beside disabled"},
    {CheckRule::NeitherState, Severity::Warning, "neither-state", "holds neither enabled nor disabled"},
    {CheckRule::StateContent, Severity::Warning, "state-content", "holds \"{}\""},
    {CheckRule::SecondElement, Severity::Warning, "second-element", "stands here again"},
    {CheckRule::OtherAuthentication, Severity::Warning, "other-authentication", "stands beside {}"},
    {CheckRule::OpenBesideAuthenticating, Severity::Warning, "open-beside-authenticating", "stands beside openNetwork"},
    {CheckRule::HexBesideName, Severity::Warning, "hex-beside-name", "stands beside Hex"},
    {CheckRule::CipherPrefix, Severity::Warning, "cipher-prefix", "is {}"},
    {CheckRule::CckmWithoutCipher, Severity::Warning, "cckm-without-cipher", "is {} under cckm"},
    {CheckRule::UnknownElement, Severity::Warning, "unknown-element", "is not known here"},
    {CheckRule::OtherEntrysElement, Severity::Warning, "other-entrys-element", "belongs to the other place"},
    {CheckRule::PrefixedElement, Severity::Warning, "prefixed-element", "has a prefix"},
    {CheckRule::SsidRenamed, Severity::Warning, "ssid-renamed", "is \"{}\""},
    {CheckRule::SsidDropped, Severity::Warning, "ssid-dropped", "is empty"},
    {CheckRule::BandReading, Severity::Warning, "band-reading", "is \"{}\""},
    {CheckRule::NoSecuritySection, Severity::Warning, "no-security-section", "has no security"},
    {CheckRule::EmptyNamespace, Severity::Warning, "empty-namespace", "declares an empty namespace before the security"},
};

constexpr const CheckRuleRow& RowOf(CheckRule rule)
{
    return checkRules[static_cast<int>(rule)];
}

constexpr bool EveryRuleHasItsRow()
{
    int n = 0;
    for (const CheckRuleRow& row : checkRules)
        if (row.rule != static_cast<CheckRule>(n++))
            return false;
    return n == static_cast<int>(CheckRule::EmptyNamespace) + 1;
}
static_assert(EveryRuleHasItsRow());
