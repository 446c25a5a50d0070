// What the profile page asked the extension and what it answered, in a person's words.
#pragma once

#include "values/WideText.h"

#include <optional>
#include <string>
#include <vector>

// An authentication and the encryption with it; both are empty where a profile names none.
std::string SecurityWords(const CWideString& strAuthentication, const CWideString& strEncryption);

// What the extension offers, and which of it is the default, if any is.
std::string OfferWords(const std::vector<CWideString>& names, std::optional<std::size_t> nDefault);

// The connection settings in a vendor's text, as the settings dialog shows them.
std::string SettingsWords(const std::optional<CWideString>& strConnectivity);

// What the help key shows. Short lines: no box wraps them.
inline constexpr const WCHAR* pageHelp = OLESTR("Authentication, Encryption: the profile's security\n"
                                                "Settings: the extension's connection settings;\n"
                                                "their bands are stored once they are confirmed\n"
                                                "Save: writes the choices into the profile\n"
                                                "Trace: what the extension traced meanwhile\n\n"
                                                "Tab, Shift+Tab: next field, field before\n"
                                                "Up, Down: choose in a list; F4: open the list\n"
                                                "Alt+letter: go to the field with the letter\n"
                                                "Space: press the button in focus\n"
                                                "Enter: press the button in focus, or save\n"
                                                "Esc: cancel");
