#pragma once

// A date in the doctor's report.

#include <string>

#include "user/dates.h"

namespace halvane {

/// `moment` as the tools show it, but without the invisible direction marks of some languages: a report
/// contains only printable text.
std::string dateInWords(Instant moment);

}  // namespace halvane
