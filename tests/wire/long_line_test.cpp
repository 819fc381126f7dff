#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>

#include "tests/support/temporary_home.h"
#include "tests/support/units.h"
#include "tests/wire/messages.h"
#include "tests/wire/processor_time.h"
#include "tests/wire/server_process.h"

// Lines have no limit, and cost time in proportion to their length.

namespace halvane {
namespace {

std::string pingWith(std::size_t bytes) {
  return R"({"jsonrpc":"2.0","id":1,"params":")" + std::string(bytes, 'x') + R"(","method":"ping"})";
}

class LongLine : public testing::Test {
 protected:
  // The processor time that a line of so many bytes takes; the best of three.
  std::chrono::nanoseconds timeFor(std::size_t bytes) {
    const std::string line = pingWith(bytes);
    auto best = std::chrono::nanoseconds::max();
    for (int attempt = 0; attempt < 3; ++attempt) {
      const auto before = processorTime(server_.id());
      server_.send(line);
      EXPECT_TRUE(server_.receive());
      best = std::min(best, processorTime(server_.id()) - before);
    }
    return best;
  }

  const TemporaryHome home_;
  ServerProcess server_{{.home = home_.path()}};
};

TEST_F(LongLine, IsServed) {
  server_.send(pingWith(64 * mebibyte));
  EXPECT_EQ(canonicalJson(server_.receive().value_or("")), R"({"id":1,"jsonrpc":"2.0","result":{}})");
  EXPECT_TRUE(answersPing(server_));
  EXPECT_EQ(server_.finish(), quietEnding);
}

TEST_F(LongLine, TakesTimeInProportionToItsLength) {
  if (!tellsProcessorTime()) GTEST_SKIP() << "the system tells no processor time";
  const auto shorter = timeFor(8 * mebibyte);
  const auto longer = timeFor(64 * mebibyte);
  EXPECT_LT(longer, 24 * shorter) << "eight times the length: " << longer.count() << " and "
                                  << shorter.count();
  EXPECT_EQ(server_.finish(), quietEnding);
}

TEST_F(LongLine, OfBlanksIsDropped) {
  server_.send(std::string(16 * mebibyte, ' '));
  EXPECT_TRUE(answersPing(server_));
  EXPECT_EQ(server_.finish(), quietEnding);
}

TEST_F(LongLine, MayBeTheLastOneWithoutALineFeed) {
  server_.write(pingWith(16 * mebibyte));
  const Ending ending = server_.finish();
  EXPECT_EQ(ending.status, 0);
  EXPECT_EQ(ending.output, "{\"jsonrpc\":\"2.0\",\"id\":1,\"result\":{}}\n");
  EXPECT_EQ(ending.errors, "");
}

}  // namespace
}  // namespace halvane
