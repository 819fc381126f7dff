#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/entry_file.h"
#include "tests/support/preload.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// Some file systems list names without telling which are files, folders or links.

namespace halvane {
namespace {

std::string answerWith(std::vector<std::string> variables, const TemporaryHome& home) {
  variables.insert(variables.end(), {"LC_ALL=en_US.UTF-8", "TZ=UTC"});
  ServerProcess server({.home = home.path(), .variables = variables});
  const std::string answer = askTool(server, "search_entries", R"({"query":"entry","limit":50})");
  EXPECT_EQ(server.finish(), quietEnding);
  return answer;
}

TEST(ListingWithoutKinds, LeadsToTheSameEntries) {
  const TemporaryHome home;
  const std::string content = EntryFile{.body = "An entry."}.text();
  for (const char* name : {"a.md", "2025/b.md", "folder.md/c.md", "no entry.txt"}) home.write(name, content);
  writeFile(home.below("elsewhere/d.md"), content);
  makeLink(home.journal() + "/link to a file.md", home.below("elsewhere/d.md"));
  makeLink(home.journal() + "/link to a folder", home.below("elsewhere"));
  makeLink(home.journal() + "/link to a folder.md", home.below("elsewhere"));
  makeLink(home.journal() + "/loop", ".");
  makeNamedPipe(home.journal() + "/pipe.md");
  makeSocket(home.journal() + "/socket.md");

  std::string expected;
  for (const char* name : {"a.md", "link to a file.md", "2025/b.md", "folder.md/c.md"}) {
    expected.append(expected.empty() ? "" : "\n\n")
        .append("[Nov 3, 2025 at 9:14 AM] " + home.journal() + "/" + name + "\n…An entry.…");
  }
  EXPECT_EQ(answerWith({}, home), expected);
  EXPECT_EQ(answerWith(preloaded(HALVANE_UNKNOWN_KINDS), home), expected);
}

}  // namespace
}  // namespace halvane
