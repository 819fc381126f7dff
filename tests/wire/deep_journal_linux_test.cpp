#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <string>

#include "tests/support/deep_folder.h"
#include "tests/support/entry_file.h"
#include "tests/support/sanitizers.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"
#include "tests/wire/tracer.h"

namespace halvane {
namespace {

// Folders one in the other, each with another one beside it that comes after all that is in the first.
void makeDeepComb(const std::string& journal, std::size_t depth) {
  const std::string name(50, 'd');
  makeFolder(journal);
  writeFileDeepBelow(journal, name, depth, "a.md", EntryFile{.body = "at the bottom"}.text());
  int folder = open(journal.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  for (std::size_t level = 0; level < depth; ++level) {
    ASSERT_EQ(mkdirat(folder, "z", 0777), 0);
    const int next = openat(folder, name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    close(folder);
    folder = next;
  }
  close(folder);
}

// The bytes of all paths by which a server opens something during a search in such a journal.
std::size_t pathBytesOfASearch(std::size_t depth) {
  const TemporaryHome home;
  makeDeepComb(home.journal(), depth);
  const TemporaryFolder folder;
  const std::string trace = folder.below("trace");
  ServerProcess server(
      {.home = home.path(), .before = [&] {
         becomeTracer(trace, {"-e", "trace=openat", "-s", "100000"}, {"HOME=" + home.path()});
       }});
  EXPECT_NE(askTool(server, "search_entries", R"({"query":"at the bottom"})").find("bottom"),
            std::string::npos);
  EXPECT_EQ(server.finish(), quietEnding);
  std::ifstream calls(trace);
  std::size_t bytes = 0;
  for (std::string line; std::getline(calls, line);) {
    const std::size_t begin = line.find('"');
    if (begin != std::string::npos) bytes += line.rfind('"') - begin - 1;
  }
  return bytes;
}

TEST(DeepJournal, IsWalkedByPathsThatGrowHardlyFasterThanItsDepth) {
  if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer has needs of its own";
  if (!hasTracer()) GTEST_SKIP() << "there is no strace here";
  EXPECT_LT(pathBytesOfASearch(400), 8 * pathBytesOfASearch(100));
}

}  // namespace
}  // namespace halvane
