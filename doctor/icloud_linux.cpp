#include "doctor/icloud.h"

namespace halvane {

CloudFiles cloudFilesBelow(const std::string& /*root*/) {
  return {};
}

}  // namespace halvane
