#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <thread>

#include "tests/support/asleep.h"
#include "tests/support/temporary_home.h"
#include "tests/support/wait_until.h"
#include "tests/wire/messages.h"
#include "tests/wire/processor_time.h"
#include "tests/wire/server_process.h"

// A client that asks for more than it reads: the pipe for the replies is full, and the server waits.

namespace halvane {
namespace {

constexpr int requests = 100;  // whose replies fill a pipe twice and more

void dontBlockOnOutput() {
  fcntl(STDOUT_FILENO, F_SETFL, fcntl(STDOUT_FILENO, F_GETFL) | O_NONBLOCK);
}

void sendRequests(ServerProcess& server) {
  for (int id = 0; id < requests; ++id) {
    server.send("{\"id\":" + std::to_string(id) + ",\"method\":\"tools/list\"}");
  }
}

// Waits until the server waits for us: the pipe has no room left for a reply.
bool waitUntilFull(const ServerProcess& server) {
  const auto isFull = [&] {
    int count = 0;
    ioctl(server.output(), FIONREAD, &count);
    return count > 10000;
  };
  return waitUntil(isFull) && waitUntilAsleep(server.id());
}

void expectReplies(ServerProcess& server) {
  for (int id = 0; id < requests; ++id) {
    const std::optional<std::string> reply = server.receive();
    ASSERT_TRUE(reply);
    EXPECT_TRUE(canonicalJson(*reply)) << *reply;
    EXPECT_NE(reply->find("\"id\":" + std::to_string(id) + ","), std::string::npos) << *reply;
  }
  EXPECT_EQ(server.finish(), quietEnding);
}

class SlowReader : public testing::TestWithParam<bool> {
 protected:
  SlowReader() : server_({.home = home_.path(), .before = GetParam() ? dontBlockOnOutput : nullptr}) {}

  const TemporaryHome home_;
  ServerProcess server_;
};

TEST_P(SlowReader, GetsEveryReplyWholeAndInOrder) {
  sendRequests(server_);
  ASSERT_TRUE(waitUntilFull(server_));
  expectReplies(server_);
}

TEST_P(SlowReader, CostsNoProcessorTimeWhileItSleeps) {
  if (!tellsProcessorTime()) GTEST_SKIP() << "the system tells no processor time";
  sendRequests(server_);
  ASSERT_TRUE(waitUntilFull(server_));
  const auto before = processorTime(server_.id());
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  EXPECT_LE(processorTime(server_.id()) - before, std::chrono::milliseconds(50));
  expectReplies(server_);
}

TEST_P(SlowReader, GetsAReplyThatIsLongerThanThePipe) {
  const std::string name(1 << 20, 'x');
  server_.send(toolCall(name, "{}"));
  ASSERT_TRUE(waitUntilFull(server_));
  const std::optional<std::string> reply = server_.receive();
  ASSERT_TRUE(reply);
  EXPECT_EQ(resultText(*reply), "Unknown tool: " + name);
  EXPECT_EQ(server_.finish(), quietEnding);
}

TEST_P(SlowReader, GetsEveryReplyWhenItReadsByteByByte) {
  for (int id = 0; id < 3; ++id) server_.send("{\"id\":1,\"method\":\"ping\"}");
  std::string output;
  for (char byte;
       std::count(output.begin(), output.end(), '\n') < 3 && read(server_.output(), &byte, 1) == 1;) {
    output += byte;
  }
  const std::string reply = "{\"jsonrpc\":\"2.0\",\"id\":1,\"result\":{}}\n";
  EXPECT_EQ(output.size(), 3 * reply.size());
  EXPECT_EQ(server_.finish(), quietEnding);
}

TEST_P(SlowReader, MayLeaveWithoutReading) {
  sendRequests(server_);
  ASSERT_TRUE(waitUntilFull(server_));
  server_.closeOutput();
  EXPECT_EQ(server_.finish(), quietEnding);
}

INSTANTIATE_TEST_SUITE_P(Pipes, SlowReader, testing::Bool(),
                         [](const auto& blocks) { return blocks.param ? "NotBlocking" : "Blocking"; });

}  // namespace
}  // namespace halvane
