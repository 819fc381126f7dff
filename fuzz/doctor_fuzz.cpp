#include <unicode/uniset.h>

#include <cstdint>
#include <string>

#include "doctor/examination.h"
#include "doctor/progress.h"
#include "doctor/report.h"
#include "fuzz/odd_home.h"
#include "fuzz/property.h"
#include "fuzz/steps.h"
#include "text/text.h"
#include "text/utf8.h"

// The doctor in a whole home. The input is laid out as fuzz/odd_home.h says; its messages stay unread. The
// report holds nothing but printable text and line feeds, all is well exactly where no line is marked, and
// the steps to it stay within a constant times the bytes of the home and the report.

namespace halvane {
namespace {

constexpr std::size_t longestInput = 16384;

// An empty home takes 2.4 to 3.3 million steps, nearly all of them for the locale's words for dates; each
// byte of a long list of tags takes 65. Both are allowed two to three times.
constexpr Cost allowed = {.atMost = 8'000'000, .aByte = 200};

bool isPrintable(const std::string& text) {
  static const icu::UnicodeSet unprintable = [] {
    UErrorCode status = U_ZERO_ERROR;
    icu::UnicodeSet set(uR"([[[:C:][:Zl:][:Zp:]]-[\u000A\u200C\u200D]])", status);
    mustHold(U_SUCCESS(status) != 0 && set.contains(0x1B) && set.contains(0x202E), "there is such a set");
    return set;
  }();
  for (std::size_t at = 0; at < text.size();) {
    if (unprintable.contains(static_cast<UChar32>(nextCodePoint(text, at)))) return false;
  }
  return true;
}

}  // namespace
}  // namespace halvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halvane;
  if (size > longestInput) return 0;
  const OddHome home({reinterpret_cast<const char*>(data), size});
  if (!home.holdsJournal()) return 0;
  const std::uint64_t before = stepsTaken();
  Progress progress;
  const Examination examination = examineJournal(progress);
  const Report report = reportOn(examination, false);
  const std::uint64_t steps = stepsTaken() - before;
  mustHold(isUtf8(report.text), "a report is UTF-8");
  mustHold(isPrintable(report.text), "a report is printable");
  const bool isMarked = report.text.find("\n! ") != std::string::npos;
  mustHold(report.isWell == !isMarked, "all is well where no line is marked");
  mustHold(report.isWell == report.text.ends_with("\n\nAll is well.\n"), "the verdict is the last line");
  mustHold(examination.entries <= examination.files, "every entry is a file");
  allowed.mustCover(steps, home.size() + report.text.size());
  return 0;
}
