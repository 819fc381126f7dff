#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "system/descriptor.h"
#include "system/paths.h"
#include "tests/support/child_process.h"
#include "tests/support/file_system_root.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

TEST(AbsolutePath, LiesBelowTheRootWhereTheCurrentDirectoryIsOutsideIt) {
  const TemporaryFolder folder;
  makeFolder(folder.below("root"));
  const std::string paths = inChildProcess([&]() -> std::string {
    const Descriptor outside = openPath(AT_FDCWD, folder.path(), toReadFolder);
    if (!takeAsRoot(folder.below("root")) || fchdir(outside.number()) != 0) return "not allowed";
    return makeAbsolute("a") + " " + makeAbsolute("");
  });
  if (paths == "not allowed") GTEST_SKIP() << "this user may not change the root of the file system";
  EXPECT_EQ(paths, "/a /");
}

}  // namespace
}  // namespace halvane
