#include <gtest/gtest.h>
#include <sys/resource.h>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

namespace halvane {
namespace {

void allowEightDescriptors() {
  const rlimit eight{8, 8};
  setrlimit(RLIMIT_NOFILE, &eight);
}

TEST(FewDescriptors, AreEnoughForAJournalOfManyFoldersInFolders) {
  const TemporaryHome home;
  home.setJournalRoot("app.halvane.Halvane", home.journal());
  std::string folder;
  std::string deepest;
  for (int level = 0; level < 100; ++level) {
    folder += std::to_string(level) + "/";
    home.write(folder + "beside/a.md", EntryFile{.date = "2025-11-02T09:14:00Z", .body = "beside"}.text());
    deepest = home.write(folder + "b.md", EntryFile{.body = "level " + std::to_string(level)}.text());
  }
  ServerProcess server(
      {.home = home.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}, .before = allowEightDescriptors});
  EXPECT_EQ(askTool(server, "search_entries", R"({"query":"level 99"})"),
            "[Nov 3, 2025 at 9:14 AM] " + deepest + "\n…level 99…");
  EXPECT_EQ(askTool(server, "read_entry", "{\"path\":" + jsonString(deepest) + "}"),
            "Date: Nov 3, 2025 at 9:14 AM\nDuration: 0s\nCleaned: false\n\nlevel 99");
  EXPECT_EQ(askTool(server, "search_entries", R"({"query":"beside","limit":1})"),
            "[Nov 2, 2025 at 9:14 AM] " + home.journal() + "/" + folder + "beside/a.md\n…beside…");
  EXPECT_EQ(server.finish(), quietEnding);
}

}  // namespace
}  // namespace halvane
