#pragma once

// How a moment is shown to the user.

#include <memory>
#include <string>

#include "user/dates.h"

namespace halvane {

/// Moments in the user's words: an abbreviated date and a short time by the conventions of the user's locale,
/// calendar and time zone, such as Nov 3, 2025 at 9:14 AM.
class DateWords {
 public:
  /// With the user's settings as they are now. After a change of settings, make a new object.
  DateWords();
  ~DateWords();
  DateWords(const DateWords&) = delete;
  DateWords& operator=(const DateWords&) = delete;

  /// `moment` in words, UTF-8.
  std::string of(Instant moment) const;

 private:
  struct Formatter;
  std::unique_ptr<Formatter> formatter_;
};

}  // namespace halvane
