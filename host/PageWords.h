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
inline constexpr const WCHAR* pageHelp = OLESTR("Choose the authentication and the encryption;\n"
                                                "Settings opens the connection settings of the extension.\n"
                                                "Save writes both into the profile, Cancel leaves it alone.\n"
                                                "The bands are the WLAN service's: it has them as soon as\n"
                                                "the settings are confirmed.\n\n"
                                                "Tab, Shift+Tab: to the next field, to the one before\n"
                                                "Up, Down: choose in a list; F4 opens and closes it\n"
                                                "Space: press the button; Alt+letter: to the marked field\n"
                                                "Enter: save, or press the button that has the focus\n"
                                                "Esc: cancel\n\n"
                                                "The list tells in words what was asked and answered;\n"
                                                "Trace shows what the extension traced of it.");
