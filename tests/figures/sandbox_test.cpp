#include "sandbox/sandbox.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <ctime>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/figures/figure.h"
#include "tests/figures/plain_reading.h"
#include "tests/figures/rounds.h"
#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"

// What giving up everything but reading adds to the start, and to reading.

namespace halvane {
namespace {

// In a child process, because no process can leave the sandbox again.
double secondsToEnter() {
  return std::stod(inChildProcess([] {
    const Stopwatch watch;
    sandbox::enterReadOnly();
    return std::to_string(watch.seconds());
  }));
}

double secondsToSayHello() {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  std::string program = HALVANE_HELLO;
  char* const arguments[] = {program.data(), nullptr};
  pid_t process = 0;
  const Stopwatch watch;
  if (posix_spawn(&process, program.c_str(), &actions, nullptr, arguments, environ) != 0)
    throw std::runtime_error("can't start " + program);
  waitpid(process, nullptr, 0);
  const double seconds = watch.seconds();
  posix_spawn_file_actions_destroy(&actions);
  return seconds;
}

TEST(SandboxFigures, ItCostsAFractionOfTheLeastThatAProgramCosts) {
  const std::vector<Times> times = takeTurns({secondsToEnter, secondsToSayHello}, 100);
  expectRatioAtMost("entering the sandbox", medianRatio(times[0], times[1]), "x the start of hello world",
                    0.1);
}

// Processor time, in a child process
double secondsToRead(const std::string& folder, bool inSandbox) {
  return std::stod(inChildProcess([&] {
    if (inSandbox) sandbox::enterReadOnly();
    const std::clock_t begin = std::clock();
    readFilesIn(folder);
    return std::to_string(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC);
  }));
}

TEST(SandboxFigures, ReadingCostsHardlyMoreInIt) {
  const TemporaryFolder folder;
  for (int i = 0; i < 10'000; ++i)
    writeFile(folder.below(std::to_string(i) + ".md"), "Walked to the harbour.\n");
  const std::vector<Times> times = takeTurns({[&] { return secondsToRead(folder.path(), true); },
                                              [&] { return secondsToRead(folder.path(), false); }},
                                             60);
  expectRatioAtMost("reading 10,000 files in the sandbox", medianRatio(times[0], times[1]),
                    "x reading them outside", 1.08);
}

}  // namespace
}  // namespace halvane
