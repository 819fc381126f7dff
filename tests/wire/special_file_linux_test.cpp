#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include "tests/support/entry_file.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

namespace halvane {
namespace {

void expectOneEntry(const TemporaryHome& home, const std::string& entry) {
  ServerProcess server({.home = home.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}});
  EXPECT_EQ(askTool(server, "search_entries", "{}"), "[Nov 3, 2025 at 9:14 AM] " + entry + "\nThe harbour.");
  EXPECT_EQ(server.finish(), quietEnding);
}

TEST(DeviceWithAnEntrysName, IsPassedOver) {
  const TemporaryHome home;
  const std::string entry = home.write("entry.md", EntryFile{.body = "The harbour."}.text());
  if (mknod((home.journal() + "/device.md").c_str(), S_IFCHR | 0666, makedev(1, 5)) != 0)
    GTEST_SKIP() << "only root may make devices";
  expectOneEntry(home, entry);
}

// The server doesn't wait for them.
TEST(SettingsInAPipe, AreNone) {
  const TemporaryHome home;
  const std::string entry = home.write("entry.md", EntryFile{.body = "The harbour."}.text());
  makeFolder(home.below(".config"));
  makeNamedPipe(home.settings(primarySuite));
  expectOneEntry(home, entry);
}

}  // namespace
}  // namespace halvane
