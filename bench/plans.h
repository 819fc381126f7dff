#pragma once

#include <chrono>
#include <cstddef>

#include "bench/journal_text.h"

namespace halvane::plans {

// The journals of all measurements; the newest entry is from the day before `today`.

inline JournalPlan englishJournal(std::size_t entries, std::chrono::sys_days today) {
  return {"english", {&english, 1}, entries, today};
}

inline JournalPlan mixedJournal(std::chrono::sys_days today) {
  return {"mixed", mixedLanguages, 10'000, today};
}

inline JournalPlan cjkJournal(std::chrono::sys_days today) {
  return {"cjk", cjkLanguages, 10'000, today};
}

}  // namespace halvane::plans
