#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
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

// Files far larger than anybody writes.

namespace halvane {
namespace {

// The seconds until a whole reply has come, of which nothing is kept.
double secondsToAnswer(ServerProcess& server, const std::string& request) {
  const Stopwatch watch;
  server.send(request);
  EXPECT_GT(readReply(server.output()), 0U);
  return watch.seconds();
}

double peak(const ServerProcess& server) {
  return inMebibytes(peakMemory(server.id()));
}

const std::string search = toolCall("search_entries", R"({"query":"kingfisher"})");

// A home with an ordinary journal and `file` in it, of `size` bytes that take no place on the disk.
class SparseJournal {
 public:
  SparseJournal(const std::string& file, std::uintmax_t size) {
    for (int entry = 0; entry < 100; ++entry)
      home_.write(std::to_string(entry) + ".md", EntryFile{.body = std::string(2000, 'x')}.text());
    std::filesystem::resize_file(home_.write(file, ""), size);
  }
  Surroundings surroundings() const { return {.home = home_.path()}; }

 private:
  const TemporaryHome home_;
};

TEST(HugeFile, OfNothingButZerosIsPassedOverAtOnce) {
  const SparseJournal huge("x.md", std::uintmax_t{1} << 30);
  const SparseJournal small("x.md", 100);
  ServerProcess besideHuge(huge.surroundings());
  ServerProcess besideSmall(small.surroundings());
  const std::vector<Times> times = takeTurns({[&] { return secondsToAnswer(besideHuge, search); },
                                              [&] { return secondsToAnswer(besideSmall, search); }},
                                             200);
  const double more = peak(besideHuge) - peak(besideSmall);
  EXPECT_EQ(besideHuge.finish(), quietEnding);
  EXPECT_EQ(besideSmall.finish(), quietEnding);
  expectRatioAtMost("search of a journal with an x.md of 1 GiB of zeros", medianRatio(times[0], times[1]),
                    "x beside a small one", 1.2);
  expectAtMost("additional peak memory for that file", more, "MiB more", 4);
}

class HugeEntry : public testing::Test {
 protected:
  HugeEntry() {
    path_ = home_.write("huge.md", EntryFile{}.text());
    std::ofstream file(path_, std::ios::app | std::ios::binary);
    const std::string sentence = "We walked down to the harbour in the evening, and the boats came in.\n";
    for (std::size_t size = 0; size < 200'000'000; size += sentence.size()) file << sentence;
  }

  void becomeCat() const {
    execl("/bin/cat", "cat", path_.c_str(), nullptr);
    throw std::runtime_error("no cat");
  }
  double secondsOfCat() const {
    const Stopwatch watch;
    ServerProcess cat({.home = home_.path(), .before = [this] { becomeCat(); }});
    EXPECT_GE(readToEnd(cat.output()), 200'000'000U);
    return watch.seconds();
  }
  double secondsOfReading() const {
    const Stopwatch watch;
    EXPECT_GE(readWholeFile(path_), 200'000'000U);
    return watch.seconds();
  }

  const TemporaryHome home_;
  std::string path_;
};

TEST_F(HugeEntry, IsSearchedInSomeTimesWhatReadingItTakes) {
  ServerProcess server({.home = home_.path()});
  const std::vector<Times> times =
      takeTurns({[&] { return secondsToAnswer(server, search); }, [&] { return secondsOfReading(); }}, 7);
  const double memory = peak(server);
  EXPECT_EQ(server.finish(), quietEnding);
  expectRatioAtMost("search of an entry of 200 MB", medianRatio(times[0], times[1]), "x reading it", 12);
  expectAtMost("peak memory of that search", memory, "MiB", 450);
}

TEST_F(HugeEntry, IsShownInSomeTimesWhatCopyingItTakes) {
  ServerProcess server({.home = home_.path()});
  const std::string read = toolCall("read_entry", "{\"path\":" + jsonString(path_) + "}");
  const std::vector<Times> times =
      takeTurns({[&] { return secondsToAnswer(server, read); }, [&] { return secondsOfCat(); }}, 7);
  const double memory = peak(server);
  EXPECT_EQ(server.finish(), quietEnding);
  expectRatioAtMost("read_entry of 200 MB", medianRatio(times[0], times[1]), "x cat", 12);
  expectAtMost("peak memory of read_entry", memory, "MiB", 900);
}

}  // namespace
}  // namespace halvane
