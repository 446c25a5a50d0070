// The element groups of the connection options: each group's reading and writing stand side by side.
#pragma once

#include "profile/CCXConnectionSettings.h"
#include "profile/IhvProfile.h"

// The name under which the diagnostic channel's SSID is defaulted, and always written.
inline constexpr const WCHAR* szDiagnosticChannelName = OLESTR("Diagnostic Channel");

void SetRadioMeasurementDefaults(CCXConnectionSettings& settings);

// Reads every group below the root into a record that was cleared.
void ReadConnectionElements(const CXmlNode& root, CCXConnectionSettings& settings);

// Appends every group of the record to the profile being written. What cannot be made is left out with all below it.
void WriteConnectionElements(const CIhvProfileWriter& writer, const CCXConnectionSettings& settings);
