#include "doctor/advice.h"

namespace halvane {

std::string advice(const std::error_code& error) {
  if (error != std::errc::permission_denied && error != std::errc::operation_not_permitted) return {};
  return "You have no permission to read this folder or to enter a folder above it. "
         "ls -ld shows the permissions.";
}

}  // namespace halvane
