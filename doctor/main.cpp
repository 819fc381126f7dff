#include <unistd.h>

#include <new>
#include <string_view>

#include "doctor/examination.h"
#include "doctor/progress.h"
#include "doctor/report.h"
#include "sandbox/sandbox.h"
#include "system/streams.h"

namespace {

constexpr int allIsWell = 0, wantsAttention = 1, wrongUsage = 2;

halvane::Examination examine() {
  halvane::Progress progress;
  return halvane::examineJournal(progress);
}

int reportToTerminal(std::string_view notRefused) {
  halvane::Examination examination = examine();
  examination.notRefused = notRefused;
  const halvane::Report report = halvane::reportOn(examination, isatty(STDOUT_FILENO) == 1);
  const bool isWritten = halvane::writeWhole(STDOUT_FILENO, report.text) == report.text.size();
  return report.isWell && isWritten ? allIsWell : wantsAttention;
}

}  // namespace

int main(int argumentCount, char** /*arguments*/) {
  const std::string_view notRefused = halvane::sandbox::enterReadOnly();
  if (argumentCount > 1) {
    halvane::writeWhole(STDERR_FILENO, "usage: halvane_doctor (it takes no arguments)\n");
    return wrongUsage;
  }
  try {
    return reportToTerminal(notRefused);
  } catch (const std::bad_alloc&) {
    halvane::writeWhole(STDERR_FILENO, "halvane_doctor: not enough memory\n");
    return wantsAttention;
  }
}
