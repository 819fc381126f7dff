#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace halvane {

// How this system tells a process who its user is: variables, each "NAME=value", and files in the home
// directory.

/// The variables by which a process finds the home directory `home`, an absolute path, and the settings in
/// it.
std::vector<std::string> variablesOfHome(const std::string& home);

/// The file in which the user of `home` keeps the settings of the application `suite`.
std::string settingsFile(const std::string& home, std::string_view suite);

/// Makes `locale`, such as de_DE, the one of the user of `home`. The result is the variables that say so.
std::vector<std::string> chooseLocale(const std::string& home, std::string_view locale);

}  // namespace halvane
