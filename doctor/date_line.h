#pragma once

// A date in the doctor's report.

#include <string>

#include "user/dates.h"

namespace halvane {

/// `moment` as the tools show it, but without the invisible marks by which some languages order it: a line of
/// the report holds printable text only.
std::string dateInWords(Instant moment);

}  // namespace halvane
