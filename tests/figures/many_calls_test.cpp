#include <gtest/gtest.h>

#include <string>

#include "tests/figures/figure.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/units.h"
#include "tests/wire/messages.h"
#include "tests/wire/process_state.h"
#include "tests/wire/server_process.h"

// A server that runs for weeks doesn't grow.

namespace halvane {
namespace {

class ManyCalls : public testing::Test {
 protected:
  ManyCalls() {
    for (int entry = 0; entry < 50; ++entry) {
      const std::string body = "Walked to the harbour.\n" + std::string(2000, 'x');
      path_ = home_.write("2099/" + std::to_string(entry) + ".md",
                          EntryFile{.date = "2099-11-03T09:14:00Z", .tags = "work", .body = body}.text());
    }
  }

  void callEveryTool(int times) {
    for (int time = 0; time < times; ++time) {
      askTool(server_, "search_entries", R"({"query":"HARBOUR","tag":"#Work","limit":50})");
      askTool(server_, "list_recent", R"({"days":365})");
      askTool(server_, "read_entry", "{\"path\":" + jsonString(path_) + "}");
    }
  }
  double memory() const { return inMebibytes(countedMemory(server_.id())); }

  const TemporaryHome home_;
  std::string path_;
  ServerProcess server_{{.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}}};
};

TEST_F(ManyCalls, TakeNeitherMemoryNorFileHandles) {
  callEveryTool(10);
  const double before = memory();
  const std::size_t files = openFiles(server_.id());
  callEveryTool(1000);
  expectAtMost("growth of memory over 1,000 searches, lists and reads", memory() - before, "MiB", 0.2);
  expectExactly("growth of open file handles over them",
                static_cast<double>(openFiles(server_.id())) - static_cast<double>(files), "handles", 0);
  EXPECT_EQ(server_.finish(), quietEnding);
}

TEST_F(ManyCalls, AfterALongLineHaveItsMemoryAgain) {
  callEveryTool(10);
  const double before = memory();
  server_.send(R"({"id":1,"method":"ping","params":")" + std::string(32 << 20, 'x') + "\"}");
  EXPECT_TRUE(server_.receive());
  callEveryTool(10);
  expectAtMost("memory kept after a line of 32 MiB", memory() - before, "MiB", 8);
  EXPECT_EQ(server_.finish(), quietEnding);
}

}  // namespace
}  // namespace halvane
