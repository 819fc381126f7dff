#pragma once

// Puts an examination into words.

#include <string>

#include "doctor/examination.h"

namespace halvane {

/// An examination in words.
struct Report {
  std::string text;    ///< UTF-8, printable except for colours; a line feed ends each line
  bool isWell = true;  ///< whether nothing in it needs attention
};

/// The report for a person at a terminal, or with `colour` false for a pipe or file.
Report reportOn(const Examination& examination, bool colour);

}  // namespace halvane
