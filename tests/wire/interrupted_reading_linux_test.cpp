#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include "tests/support/asleep.h"
#include "tests/support/entry_file.h"
#include "tests/support/preload.h"
#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// A library in the process has a signal interrupt it all the time.

namespace halvane {
namespace {

void waitForSignals() {
  std::this_thread::sleep_for(std::chrono::milliseconds(100));
}

TEST(Signals, LetReadingGoOn) {
  const TemporaryHome home;
  const std::string path = home.write("a.md", EntryFile{.body = "Walked to the harbour."}.text());
  std::vector<std::string> variables = preloaded(HALVANE_INTERRUPTIONS);
  variables.insert(variables.end(), {"LC_ALL=en_US.UTF-8", "TZ=UTC"});
  ServerProcess server({.home = home.path(), .variables = variables});
  for (int time = 0; time < 5; ++time) {
    server.write("{\"id\":1,\"me");
    ASSERT_TRUE(waitUntilAsleep(server.id()));
    waitForSignals();
    server.write("thod\":\"ping\"}\n");
    EXPECT_EQ(canonicalJson(server.receive().value_or("")), R"({"id":1,"jsonrpc":"2.0","result":{}})");
    EXPECT_EQ(askTool(server, "search_entries", R"({"query":"harbour"})"),
              "[Nov 3, 2025 at 9:14 AM] " + path + "\n…Walked to the harbour.…");
  }
  EXPECT_EQ(server.finish(), quietEnding);
}

TEST(Signals, LetWritingGoOn) {
  const TemporaryHome home;
  ServerProcess server({.home = home.path(), .variables = preloaded(HALVANE_INTERRUPTIONS)});
  const std::string name(1 << 20, 'x');
  server.send(toolCall(name, "{}"));
  ASSERT_TRUE(waitUntilAsleep(server.id()));
  waitForSignals();
  EXPECT_EQ(resultText(server.receive().value_or("")), "Unknown tool: " + name);
  EXPECT_EQ(server.finish(), quietEnding);
}

}  // namespace
}  // namespace halvane
