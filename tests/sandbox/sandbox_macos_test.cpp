#include "sandbox/sandbox.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

std::string wordIn(const std::string& path) {
  std::string word;
  std::ifstream(path) >> word;
  return word;
}

bool canWrite(const std::string& path) {
  return std::ofstream(path).is_open();
}

TEST(Sandbox, LetsEverythingBeRead) {
  const TemporaryFolder folder;
  writeFile(folder.below("a"), "content");
  EXPECT_EQ(inChildProcess([&] {
              sandbox::enterReadOnly();
              sandbox::enterReadOnly();  // once more is refused and changes nothing
              return wordIn(folder.below("a"));
            }),
            "content");
}

TEST(Sandbox, LetsNothingBeWritten) {
  if (access("/usr/bin/sandbox-exec", X_OK) != 0) GTEST_SKIP() << "the system has no such sandbox";
  const TemporaryFolder folder;
  writeFile(folder.below("a"), "content");
  EXPECT_EQ(inChildProcess([&] {
              sandbox::enterReadOnly();
              const bool changes = canWrite(folder.below("a"));
              const bool makes = canWrite(folder.below("b"));
              const bool removes = unlink(folder.below("a").c_str()) == 0;
              return std::string(changes || makes || removes ? "written" : "refused");
            }),
            "refused");
  EXPECT_EQ(wordIn(folder.below("a")), "content");
}

}  // namespace
}  // namespace halvane
