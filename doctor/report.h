#pragma once

// What the doctor says, from what it found out.

#include <string>

#include "doctor/examination.h"

namespace halvane {

/// An examination in words.
struct Report {
  std::string text;    ///< UTF-8, printable, lines with a line feed each, colours apart
  bool isWell = true;  ///< whether nothing in it wants attention
};

/// The report for a person at a terminal, or with `colour` false for a pipe or file.
Report reportOn(const Examination& examination, bool colour);

}  // namespace halvane
