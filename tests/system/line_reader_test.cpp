#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <chrono>
#include <csignal>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "system/streams.h"
#include "tests/support/child_process.h"
#include "tests/support/process_limits.h"
#include "tests/support/sanitizers.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
using Lines = std::vector<std::string>;

class Pipe {
 public:
  Pipe() { EXPECT_EQ(pipe(ends_.data()), 0); }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;
  ~Pipe() {
    close(ends_[0]);
    closeWriting();
  }
  int reading() const { return ends_[0]; }
  int writing() const { return ends_[1]; }
  void closeWriting() {
    if (ends_[1] >= 0) close(ends_[1]);
    ends_[1] = -1;
  }

 private:
  std::array<int, 2> ends_{};
};

void put(int descriptor, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(descriptor, bytes.data(), bytes.size());
    ASSERT_GT(count, 0);
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

Lines linesFrom(int descriptor) {
  LineReader reader(descriptor);
  Lines lines;
  while (const auto line = reader.next()) lines.emplace_back(*line);
  return lines;
}

// What comes out when these pieces go in, one write each.
Lines linesOf(const std::vector<std::string>& pieces) {
  Pipe pipe;
  std::thread writer([&] {
    for (const std::string& piece : pieces) put(pipe.writing(), piece);
    pipe.closeWriting();
  });
  Lines lines = linesFrom(pipe.reading());
  writer.join();
  return lines;
}

TEST(LineReader, CutsAtEveryLineFeedAndNowhereElse) {
  struct Case {
    std::string bytes;
    Lines lines;
  };
  for (const Case& c :
       {Case{"", {}}, Case{"\n", {""}}, Case{"a\n", {"a"}}, Case{"a", {"a"}}, Case{"a\nb\n", {"a", "b"}},
        Case{"a\nb", {"a", "b"}}, Case{"\n\na\n\n", {"", "", "a", ""}}, Case{"a\r\nb\r\n", {"a\r", "b\r"}},
        Case{"a\rb\v\f\u0085\u2028c\n", {"a\rb\v\f\u0085\u2028c"}}, Case{"a\0b\n"s, {"a\0b"s}},
        Case{"\xFF\xC3\n", {"\xFF\xC3"}}}) {
    EXPECT_EQ(linesOf({c.bytes}), c.lines) << testing::PrintToString(c.bytes);
  }
}

TEST(LineReader, PutsTogetherWhatComesInPieces) {
  EXPECT_EQ(linesOf({"a", "b", "\n", "c\nd", "e\n\n", "f"}), (Lines{"ab", "c", "de", "", "f"}));
}

TEST(LineReader, GivesALineAsSoonAsItsLineFeedIsThere) {
  Pipe pipe;
  LineReader reader(pipe.reading());
  put(pipe.writing(), "a\nb\nhalf");
  EXPECT_EQ(reader.next(), "a");
  EXPECT_EQ(reader.next(), "b");
  put(pipe.writing(), " and half\n");
  EXPECT_EQ(reader.next(), "half and half");
  pipe.closeWriting();
  EXPECT_EQ(reader.next(), std::nullopt);
  EXPECT_EQ(reader.next(), std::nullopt);
}

TEST(LineReader, LinesMayBeOfAnyLength) {
  Lines lines;
  std::string bytes;
  for (const std::size_t length :
       {65534U, 65535U, 65536U, 65537U, 1U, 131072U, 0U, 5000000U, 3U, 1048576U, 1048577U, 2000000U}) {
    lines.push_back(std::string(length, static_cast<char>('a' + lines.size())));
    bytes.append(lines.back()).append("\n");
  }
  lines.push_back("last");
  EXPECT_EQ(linesOf({bytes + "last"}), lines);
}

TEST(LineReader, ReadsManyShortLines) {
  Lines lines;
  std::string bytes;
  for (int i = 0; i < 200000; ++i) {
    lines.push_back(std::to_string(i));
    bytes.append(lines.back()).append("\n");
  }
  EXPECT_EQ(linesOf({bytes}), lines);
}

TEST(LineReader, WaitsOnAPipeThatDoesNotBlock) {
  Pipe pipe;
  ASSERT_EQ(fcntl(pipe.reading(), F_SETFL, O_NONBLOCK), 0);
  std::thread writer([&] {
    for (const char* piece : {"a", "b\n", "c\n", "d"}) {
      std::this_thread::sleep_for(20ms);
      put(pipe.writing(), piece);
    }
    std::this_thread::sleep_for(20ms);
    pipe.closeWriting();
  });
  EXPECT_EQ(linesFrom(pipe.reading()), (Lines{"ab", "c", "d"}));
  writer.join();
}

TEST(LineReader, GoesOnAfterASignal) {
  static std::atomic<int> signalsSeen = 0;
  struct sigaction action {};
  action.sa_handler = [](int) { ++signalsSeen; };  // without SA_RESTART: the read ends with EINTR
  struct sigaction before {};
  ASSERT_EQ(sigaction(SIGUSR1, &action, &before), 0);
  Pipe pipe;
  const pthread_t reading = pthread_self();
  std::thread writer([&] {
    put(pipe.writing(), "a");
    for (int i = 0; i < 5; ++i) {
      std::this_thread::sleep_for(20ms);
      pthread_kill(reading, SIGUSR1);
    }
    std::this_thread::sleep_for(20ms);
    put(pipe.writing(), "b\n");
    pipe.closeWriting();
  });
  EXPECT_EQ(linesFrom(pipe.reading()), (Lines{"ab"}));
  writer.join();
  EXPECT_GT(signalsSeen, 0);
  sigaction(SIGUSR1, &before, nullptr);
}

TEST(LineReader, TakesAnyOtherErrorForTheEnd) {
  EXPECT_EQ(linesFrom(-1), Lines{});
  const TemporaryFolder folder;
  const int directory = open(folder.path().c_str(), O_RDONLY | O_CLOEXEC);
  EXPECT_EQ(linesFrom(directory), Lines{});
  close(directory);
}

TEST(LineReader, GivesTheMemoryOfAVeryLongLineBack) {
  if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer keeps memory that is freed";
  if (!std::ifstream("/proc/self/statm"))
    GTEST_SKIP() << "the system doesn't tell in a file what a process holds";
  const TemporaryFolder folder;
  writeFile(folder.below("input"), std::string(200 << 20, 'x') + "\nshort\nlast\n");
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              const auto residentMebibytes = [] {
                std::size_t all = 0;
                std::size_t resident = 0;
                std::ifstream("/proc/self/statm") >> all >> resident;
                return resident * static_cast<std::size_t>(sysconf(_SC_PAGESIZE)) >> 20;
              };
              LineReader reader(open(folder.below("input").c_str(), O_RDONLY | O_CLOEXEC));
              if (reader.next()->size() != 200U << 20) return "not the long line";
              const std::size_t before = residentMebibytes();
              if (reader.next() != "short") return "not the short line";
              return before - residentMebibytes() > 150 ? "given back" : "kept";
            }),
            "given back");
}

TEST(LineReader, PassesOverALineForWhichThereIsNoMemory) {
  if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer's own memory leaves no room for a limit";
  if (!canLimitMemory()) GTEST_SKIP() << "the system limits no memory";
  const TemporaryFolder folder;
  writeFile(folder.below("input"),
            "first\n" + std::string(200 << 20, 'x') + "\nnext\n" + std::string(200 << 20, 'y'));
  EXPECT_EQ(inChildProcess([&] {
              limitFurtherMemory(64 << 20);
              const int input = open(folder.below("input").c_str(), O_RDONLY | O_CLOEXEC);
              std::string all;
              for (const std::string& line : linesFrom(input)) all.append(line).append("|");
              return all;
            }),
            "first|next|");
}

}  // namespace
}  // namespace halvane
