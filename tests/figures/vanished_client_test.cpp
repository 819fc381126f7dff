#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "tests/figures/figure.h"
#include "tests/figures/rounds.h"
#include "tests/support/asleep.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/processor_time.h"
#include "tests/wire/server_process.h"

// A client that is gone from one moment to the next.

namespace halvane {
namespace {

// Counts how often files are opened. The system reports the same event only once in a row, so there must be
// two that take turns.
class OpenedFiles {
 public:
  OpenedFiles(const std::string& one, const std::string& other)
      : events_(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
    for (const std::string& path : {one, other})
      if (inotify_add_watch(events_, path.c_str(), IN_OPEN) < 0)
        throw std::runtime_error("can't watch " + path);
  }
  ~OpenedFiles() { close(events_); }
  OpenedFiles(const OpenedFiles&) = delete;
  OpenedFiles& operator=(const OpenedFiles&) = delete;

  std::size_t count() const {
    alignas(inotify_event) std::array<char, 65536> block;
    std::size_t bytes = 0;
    for (ssize_t size; (size = read(events_, block.data(), block.size())) > 0;)
      bytes += static_cast<std::size_t>(size);
    return bytes / sizeof(inotify_event);
  }

 private:
  int events_;
};

class VanishedClient : public testing::Test {
 protected:
  const TemporaryHome home_;
  const std::string one_ = home_.write("1.md", EntryFile{.body = "The harbour."}.text());
  const std::string other_ = home_.write("2.md", EntryFile{.body = "The harbour."}.text());
  const std::string search_ = toolCall("search_entries", R"({"query":"harbour"})");
};

void vanish(ServerProcess& server) {
  server.closeOutput();
  server.closeInput();
}

TEST_F(VanishedClient, TakesAnIdleServerWithItAtOnce) {
  std::vector<double> milliseconds;
  for (int time = 0; time < 20; ++time) {
    ServerProcess server({.home = home_.path()});
    askTool(server, "search_entries", R"({"query":"harbour"})");
    ASSERT_TRUE(waitUntilAsleep(server.id()));
    const Stopwatch watch;
    vanish(server);
    EXPECT_EQ(server.finish(), quietEnding);
    milliseconds.push_back(watch.seconds() * 1000);
  }
  expectAtMost("time until an idle server ends after its client has gone", median(milliseconds), "ms", 50);
}

TEST_F(VanishedClient, HasItsLastMessagesServed) {
  constexpr int messages = 200;
  const OpenedFiles opened(one_, other_);
  ServerProcess server({.home = home_.path()});
  for (int message = 0; message < messages; ++message) server.send(search_);
  vanish(server);
  EXPECT_EQ(server.finish(), quietEnding);
  expectExactly("messages handled that a vanished client had sent", static_cast<double>(opened.count()) / 2,
                "messages", messages);
}

TEST_F(VanishedClient, ThatOnlyDoesNotListenKeepsTheServerAndCostsNothing) {
  const OpenedFiles opened(one_, other_);
  ServerProcess server({.home = home_.path()});
  ASSERT_TRUE(answersPing(server));
  server.closeOutput();
  for (int message = 0; message < 10; ++message) server.send(search_);
  ASSERT_TRUE(waitUntilAsleep(server.id()));
  const auto before = processorTime(server.id());
  std::this_thread::sleep_for(std::chrono::seconds(1));
  const std::chrono::duration<double, std::milli> used = processorTime(server.id()) - before;
  server.send(search_);
  EXPECT_EQ(server.finish(), quietEnding);
  EXPECT_EQ(opened.count(), 2U * 11U) << "the last one was sent when nobody listened any more";
  expectAtMost("processor time used in a second without a listener", used.count(), "ms", 1);
}

}  // namespace
}  // namespace halvane
