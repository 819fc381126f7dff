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

constexpr std::string_view version = "halvane_doctor " HALVANE_VERSION "\n";
constexpr std::string_view usage = "usage: halvane_doctor [--help | --version]\n";
constexpr std::string_view help =
    "usage: halvane_doctor [--help | --version]\n"
    "\n"
    "Shows what an AI assistant finds in your journal, and what it doesn't. Lines that need attention begin\n"
    "with \"!\".\n"
    "\n"
    "The exit status is 0 if no line needs attention, and 1 if one does or the report can't be written.\n"
    "With a wrong argument, it is 2.\n"
    "\n"
    "  --help     prints this text\n"
    "  --version  prints the version\n";

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

// Answers a call with one argument.
int answer(std::string_view argument) {
  const bool isHelp = argument == "--help";
  if (!isHelp && argument != "--version") {
    halvane::writeWhole(STDERR_FILENO, usage);
    return wrongUsage;
  }
  const std::string_view text = isHelp ? help : version;
  return halvane::writeWhole(STDOUT_FILENO, text) == text.size() ? allIsWell : wantsAttention;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  const std::string_view notRefused = halvane::sandbox::enterReadOnly();
  try {
    if (argumentCount > 1) return answer(argumentCount == 2 ? arguments[1] : "");
    return reportToTerminal(notRefused);
  } catch (const std::bad_alloc&) {
    halvane::writeWhole(STDERR_FILENO, "halvane_doctor: not enough memory\n");
    return wantsAttention;
  }
}
