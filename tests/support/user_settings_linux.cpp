#include "tests/support/user_settings.h"

namespace halvane {

std::vector<std::string> variablesOfHome(const std::string& home) {
  return {"HOME=" + home};
}

std::string settingsFile(const std::string& home, std::string_view suite) {
  return home + "/.config/" + std::string(suite) + ".plist";
}

std::vector<std::string> chooseLocale(const std::string& /*home*/, std::string_view locale) {
  return {"LC_ALL=" + std::string(locale) + ".UTF-8"};
}

}  // namespace halvane
