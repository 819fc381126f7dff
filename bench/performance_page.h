#pragma once

#include <string>

#include "bench/report.h"

namespace halvane {

/// Puts the tables of a run, the day and the machine in words between the two markers of
/// `folder`/performance.md. Throws when the run was not a full
/// one or a file can't be written.
void writePerformancePage(const std::string& folder, const Report& report);

}  // namespace halvane
