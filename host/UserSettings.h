// The per-user settings store: short text values addressed by application,
// section and key, kept in one file, "<settings folder>/Tamrisk/
// user-settings.ini". A write replaces the file in one step, so a crash never
// leaves it half written.
#pragma once

#include <string>

namespace nivarel::host {

// The stored value, or fallback when there is none.
std::string GetSetting(const std::string& application, const std::string& section, const std::string& key,
                       const std::string& fallback);
// Stores the value; a failure is logged and the value is lost.
void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                 const std::string& value);
// The store's file.
std::string UserSettingsPath();

}  // namespace nivarel::host
