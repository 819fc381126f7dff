#pragma once

#include <string>
#include <vector>

namespace halvane {

/// The variables for a server's environment that load `library` before all others.
inline std::vector<std::string> preloaded(const std::string& library) {
  // A server with a sanitizer in it would insist on having that first, though nothing depends on it.
  return {"LD_PRELOAD=" + library, "ASAN_OPTIONS=verify_asan_link_order=0"};
}

}  // namespace halvane
