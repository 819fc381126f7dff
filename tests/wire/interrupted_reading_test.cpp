#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <functional>
#include <thread>

#include "tests/support/asleep.h"
#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/processor_time.h"
#include "tests/wire/server_process.h"

// Reading and writing that is interrupted, or that the system puts off, goes on where it was.

namespace halvane {
namespace {

const std::string pingLine = "{\"id\":1,\"method\":\"ping\"}\n";
const std::string reply = R"({"id":1,"jsonrpc":"2.0","result":{}})";

void dontBlockOnInput() {
  fcntl(STDIN_FILENO, F_SETFL, fcntl(STDIN_FILENO, F_GETFL) | O_NONBLOCK);
}

// Sends a ping in two pieces, with `between` done while the server waits for the second.
void expectReplyAround(ServerProcess& server, const std::function<void()>& between) {
  server.write(pingLine.substr(0, 10));
  ASSERT_TRUE(waitUntilAsleep(server.id()));
  between();
  server.write(pingLine.substr(10));
  EXPECT_EQ(canonicalJson(server.receive().value_or("")), reply);
}

void waitAMoment() {
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
}

class InterruptedReading : public testing::Test {
 protected:
  const TemporaryHome home_;
};

TEST_F(InterruptedReading, ByAStopGoesOn) {
  ServerProcess server({.home = home_.path()});
  expectReplyAround(server, [&] {
    kill(server.id(), SIGSTOP);
    waitAMoment();
    kill(server.id(), SIGCONT);
    waitAMoment();
  });
  EXPECT_EQ(server.finish(), quietEnding);
}

TEST_F(InterruptedReading, OfAnInputThatDoesNotBlockGoesOn) {
  ServerProcess server({.home = home_.path(), .before = dontBlockOnInput});
  expectReplyAround(server, waitAMoment);
  expectReplyAround(server, [&] {
    kill(server.id(), SIGSTOP);
    waitAMoment();
    kill(server.id(), SIGCONT);
    waitAMoment();
  });
  EXPECT_EQ(server.finish(), quietEnding);
}

TEST_F(InterruptedReading, OfAnInputThatDoesNotBlockCostsNoProcessorTime) {
  if (!tellsProcessorTime()) GTEST_SKIP() << "the system tells no processor time";
  ServerProcess server({.home = home_.path(), .before = dontBlockOnInput});
  ASSERT_TRUE(answersPing(server));
  ASSERT_TRUE(waitUntilAsleep(server.id()));
  const auto before = processorTime(server.id());
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  EXPECT_LE(processorTime(server.id()) - before, std::chrono::milliseconds(50));
  EXPECT_EQ(server.finish(), quietEnding);
}

TEST_F(InterruptedReading, OfAnInputThatDoesNotBlockEndsWithIt) {
  ServerProcess server({.home = home_.path(), .before = dontBlockOnInput});
  ASSERT_TRUE(waitUntilAsleep(server.id()));
  EXPECT_EQ(server.finish(), quietEnding);
}

}  // namespace
}  // namespace halvane
