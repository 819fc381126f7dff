#pragma once

#include <cstdio>
#include <cstdlib>

namespace halvane {

/// Where `holds` is false, this run is a finding: the input that led to it is kept as its reproducer.
inline void mustHold(bool holds, const char* property) {
  if (holds) return;
  std::fprintf(stderr, "\nThis doesn't hold: %s\n", property);
  std::abort();
}

}  // namespace halvane
