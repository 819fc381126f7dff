#include <gtest/gtest.h>

#include <string>

#include "tests/figures/figure.h"
#include "tests/figures/plain_reading.h"
#include "tests/figures/rounds.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/units.h"
#include "tests/wire/messages.h"
#include "tests/wire/process_state.h"
#include "tests/wire/server_process.h"

// Two hundred years of a diary, in one folder.

namespace halvane {
namespace {

constexpr int files = 100'000;

TEST(ManyFiles, InOneFolderAreSearchedInTheTimeThatReadingThemTakes) {
  const TemporaryHome home;
  std::string body;
  while (body.size() < 1000) body += "We walked down to the harbour in the evening, and the boats came in.\n";
  for (int file = 0; file < files; ++file)
    home.write(std::to_string(file) + ".md", EntryFile{.tags = "work", .body = body}.text());
  home.write("last.md", EntryFile{.body = "A kingfisher."}.text());

  ServerProcess server({.home = home.path()});
  const Contestant search = [&] {
    const Stopwatch watch;
    EXPECT_NE(askTool(server, "search_entries", R"({"query":"Kingfisher"})").find("…A kingfisher.…"),
              std::string::npos);
    return watch.seconds();
  };
  const Contestant reading = [&] {
    const Stopwatch watch;
    EXPECT_GT(readFilesIn(home.journal()), files * body.size());
    return watch.seconds();
  };
  const std::vector<Times> times = takeTurns({search, reading}, 15);
  const double peak = inMebibytes(peakMemory(server.id()));
  EXPECT_EQ(server.finish(), quietEnding);
  expectRatioAtMost("search of 100,000 files in one folder", medianRatio(times[0], times[1]),
                    "x reading them", 1.25);
  expectAtMost("peak memory of that search", peak, "MiB", 80);
}

}  // namespace
}  // namespace halvane
