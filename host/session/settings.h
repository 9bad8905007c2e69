// The module's settings: the command line's, then the settings file's.
#pragma once

#include "embedded_host/settings_source.h"

namespace embedded_host::session
{

/// Reads the settings anew. Throws std::runtime_error that says what is wrong and where; the settings before stay.
void readSettings(const SettingsSource& source);

/// Gives one more setting, or another value to one that was given.
void giveSetting(const std::string& name, const std::string& value);

/// Logs what was set but never asked for since the last `readSettings`: most likely a mistyped name, or a setting that
/// matters only where there is a table.
void reportUnusedSettings();

} // namespace embedded_host::session
