#pragma once

// The parts of the doctor's report, each under a heading of its own.

#include "doctor/examination.h"
#include "doctor/page.h"

namespace halvane {

/// Where the journal is, by whose word, and what speaks against it.
void describeLocation(const Examination& examination, Page& page);

/// What is in the journal, and what in it is out of order.
void describeContent(const Examination& examination, Page& page);

/// How dates are shown, in which language and time zone.
void describeDates(Page& page);

/// The tags; nothing where there are none.
void describeTags(const Examination& examination, Page& page);

}  // namespace halvane
