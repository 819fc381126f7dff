#pragma once

#include <string>
#include <vector>

namespace halvane {

/// What to put into a server's environment so that `library` is loaded into it before all others.
inline std::vector<std::string> preloaded(const std::string& library) {
  // A server with a sanitizer in it would insist on having that first, though nothing depends on it.
  return {"LD_PRELOAD=" + library, "ASAN_OPTIONS=verify_asan_link_order=0"};
}

}  // namespace halvane
