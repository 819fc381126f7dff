#include "tests/support/property_list.h"
#include "tests/support/user_settings.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

std::string settingsFolder(const std::string& home) {
  return home + "/Library/Preferences";
}

}  // namespace

// Settings come from a service of the system, which knows only who is logged in. Without the service
// CoreFoundation reads the files itself: below CFFIXED_USER_HOME, on other systems than Apple's in
// XDG_CONFIG_HOME.
std::vector<std::string> variablesOfHome(const std::string& home) {
  return {"HOME=" + home, "__CFPREFERENCES_AVOID_DAEMON=1", "CFFIXED_USER_HOME=" + home,
          "XDG_CONFIG_HOME=" + settingsFolder(home)};
}

std::string settingsFile(const std::string& home, std::string_view suite) {
  return settingsFolder(home) + "/" + std::string(suite) + ".plist";
}

// The locale is a setting of the user's for all applications.
std::vector<std::string> chooseLocale(const std::string& home, std::string_view locale) {
  writeFile(settingsFile(home, ".GlobalPreferences"), propertyListOfText("AppleLocale", locale));
  return {};
}

}  // namespace halvane
