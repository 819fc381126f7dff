#include <gtest/gtest.h>

#include <future>

#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

namespace halvane {
namespace {

TEST(ManyPings, AreAllAnsweredInTheirOrder) {
  constexpr int count = 20000;
  const TemporaryHome home;
  ServerProcess server({.home = home.path()});
  const auto sending = std::async(std::launch::async, [&] {
    for (int id = 0; id < count; ++id) server.send("{\"id\":" + std::to_string(id) + ",\"method\":\"ping\"}");
  });
  for (int id = 0; id < count; ++id) {
    const std::optional<std::string> reply = server.receive();
    ASSERT_TRUE(reply);
    ASSERT_EQ(canonicalJson(*reply), "{\"id\":" + std::to_string(id) + ",\"jsonrpc\":\"2.0\",\"result\":{}}");
  }
  sending.wait();
  EXPECT_EQ(server.finish(), quietEnding);
}

}  // namespace
}  // namespace halvane
