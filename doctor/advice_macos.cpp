#include "doctor/advice.h"

namespace halvane {

// Privacy settings are kept for each app, and this program counts as the terminal that it was started from.
std::string advice(const std::error_code& error) {
  if (!error) {
    return "macOS protects the Documents folder for each app. If your assistant finds nothing all the same, "
           "allow the assistant's app under System Settings, Privacy & Security, Files and Folders. Then "
           "restart the app.";
  }
  if (error != std::errc::permission_denied && error != std::errc::operation_not_permitted) return {};
  return "macOS protects the Documents folder. Allow this terminal and your assistant's app under System "
         "Settings, Privacy & Security, Files and Folders. Then restart both apps.";
}

}  // namespace halvane
