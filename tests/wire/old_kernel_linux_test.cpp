#include <gtest/gtest.h>
#include <sys/syscall.h>

#include <cerrno>
#include <string>
#include <vector>

#include "tests/support/entry_file.h"
#include "tests/support/lesser_kernel.h"
#include "tests/support/sanitizers.h"
#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

namespace halvane {
namespace {

// As Linux 4.4 answers, the oldest that the program is for: copy_file_range came with the next version, and
// all calls with higher numbers later.
void refuseWhatCameAfterLinux4_4() {
  std::vector<RefusedCall> calls;
  for (long number = SYS_copy_file_range; number < 600; ++number) calls.push_back({number, ENOSYS});
  refuseCalls(calls);
}

TEST(ServerOnAnOldKernel, SearchesListsAndReads) {
  if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer makes newer calls";
  const TemporaryHome home;
  const std::string path = home.write(
      "2099/a.md", EntryFile{.date = "2099-11-03T09:14:00Z", .body = "Walked to the harbour."}.text());
  ServerProcess server({.home = home.path(),
                        .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"},
                        .before = refuseWhatCameAfterLinux4_4});
  EXPECT_EQ(askTool(server, "search_entries", R"({"query":"harbour"})"),
            "[Nov 3, 2099 at 9:14 AM] " + path + "\n…Walked to the harbour.…");
  EXPECT_EQ(askTool(server, "list_recent", "{}"), "[Nov 3, 2099 at 9:14 AM] Walked to the harbour.\n" + path);
  EXPECT_NE(askTool(server, "read_entry", "{\"path\":" + jsonString(path) + "}").find("Walked"),
            std::string::npos);
  EXPECT_EQ(server.finish(), quietEnding);
}

}  // namespace
}  // namespace halvane
