#include "tests/support/preload.h"
#include "tests/wire/clock.h"

namespace halvane {

std::vector<std::string> clockAt(std::int64_t seconds) {
  std::vector<std::string> variables = preloaded(HALVANE_LIBFAKETIME);
  variables.insert(variables.end(), {"FAKETIME_FMT=%s", "FAKETIME=" + std::to_string(seconds)});
  return variables;
}

}  // namespace halvane
