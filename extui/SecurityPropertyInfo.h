// The security properties that are offered, and the names under which their values are shown.
#pragma once

#include "values/WideText.h"

#include <span>

inline constexpr std::size_t maxCiphers = 10;

// Describes one offered security property. Properties point to it and do not copy it; it outlives them.
struct CCXSecurityPropertyInfo
{
    DWORD auth;
    BOOLEAN bHasDialog;
    BOOLEAN bQualifiedNames; // raised while the host shows a connection that wants qualified names
    BOOLEAN bInitialQualifiedNames;
    ULONG kind;
    LONG cipherCount;
    DWORD ciphers[maxCiphers]; // the first cipherCount are used
};

// The qualified-names flag is written and read by properties on several threads.
bool HasQualifiedNames(CCXSecurityPropertyInfo& info);
void SetQualifiedNames(CCXSecurityPropertyInfo& info, bool bQualified);

// The ciphers in use, bounded by the array.
std::span<const DWORD> CiphersOf(const CCXSecurityPropertyInfo& info);

// The cipher of a profile that names none of its own: the one in the row before the cipher count of the name table.
DWORD FallbackCipher(const CCXSecurityPropertyInfo& info);

// The offered properties: one, CCKM.
std::span<CCXSecurityPropertyInfo> SecurityPropertyInfos();

// Null for a value without a row.
const WCHAR* FindAuthenticationName(DWORD auth);

// "" for a value without a row.
const WCHAR* AuthenticationName(DWORD auth);
const WCHAR* CipherName(DWORD cipher, bool bQualified);
