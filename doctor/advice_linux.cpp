#include "doctor/advice.h"

namespace halvane {

std::string advice(const std::error_code& error) {
  if (error != std::errc::permission_denied && error != std::errc::operation_not_permitted) return {};
  return "You may not read it, or not enter a folder on the way to it: ls -ld shows who may.";
}

}  // namespace halvane
