#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <stdexcept>
#include <string>

#include "tests/figures/figure.h"
#include "tests/figures/rounds.h"
#include "tests/support/temporary_home.h"
#include "tests/support/units.h"
#include "tests/wire/server_process.h"

// A client that sends and sends, and no line end.

namespace halvane {
namespace {

constexpr std::size_t mebibytes = 256;

void becomeCat() {
  openAs(STDOUT_FILENO, "/dev/null", O_WRONLY);
  execl("/bin/cat", "cat", nullptr);
  throw std::runtime_error("no cat");
}

double secondsToTakeText(ServerProcess& process) {
  const std::string text(mebibyte, 'x');
  const Stopwatch watch;
  for (std::size_t i = 0; i < mebibytes; ++i) process.write(text);
  EXPECT_EQ(process.finish(), quietEnding);
  return watch.seconds();
}

TEST(EndlessLine, TakesLittleMoreThanToBeMoved) {
  const TemporaryHome home;
  std::size_t peak = 0;
  const Contestant server = [&] {
    ServerProcess process({.home = home.path()});
    const double seconds = secondsToTakeText(process);
    peak = std::max(peak, process.peakMemory());
    return seconds;
  };
  const Contestant cat = [&] {
    ServerProcess process({.home = home.path(), .before = becomeCat});
    return secondsToTakeText(process);
  };
  const std::vector<Times> times = takeTurns({server, cat}, 7);
  expectRatioAtMost("reading 256 MiB without a line end", medianRatio(times[0], times[1]), "x cat", 8);
  expectAtMost("peak memory for that line", static_cast<double>(peak) / (mebibytes * mebibyte), "x its size",
               2);
}

}  // namespace
}  // namespace halvane
