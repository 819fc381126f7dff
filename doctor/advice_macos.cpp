#include "doctor/advice.h"

namespace halvane {

// Privacy settings are kept for each app, and this program counts as the terminal that it was started from.
std::string advice(const std::error_code& error) {
  if (!error) {
    return "macOS protects the Documents folder app by app. If your assistant finds nothing all the same, "
           "allow its app: System Settings, Privacy & Security, Files and Folders. Then start it again.";
  }
  if (error != std::errc::permission_denied && error != std::errc::operation_not_permitted) return {};
  return "macOS protects the Documents folder. Allow it to this terminal and to your assistant's app: System "
         "Settings, Privacy & Security, Files and Folders. Then start both again.";
}

}  // namespace halvane
