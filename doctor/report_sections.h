#pragma once

// The parts of the doctor's report, each under its heading.

#include "doctor/examination.h"
#include "doctor/page.h"

namespace halvane {

/// Where the journal is, which settings say so, and what may be wrong about that.
void describeLocation(const Examination& examination, Page& page);

/// What is in the journal, and what is wrong there.
void describeContent(const Examination& examination, Page& page);

/// How dates are shown, in which language and time zone.
void describeDates(Page& page);

/// The tags; nothing when there are none.
void describeTags(const Examination& examination, Page& page);

}  // namespace halvane
