#include "system/descriptor.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <string>
#include <utility>

#include "tests/support/child_process.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

TEST(OpenPath, IsClosedToTheProgramsThatThisProcessStarts) {
  const TemporaryFolder folder;
  writeFile(folder.below("a.md"), "");
  for (const auto& [path, flags] :
       {std::pair(folder.below("a.md"), toReadFile), std::pair(folder.path(), toReadFolder)}) {
    const Descriptor opened = openPath(AT_FDCWD, path, flags);
    ASSERT_TRUE(opened.isOpen());
    EXPECT_EQ(fcntl(opened.number(), F_GETFD), FD_CLOEXEC) << path;
  }
}

// Otherwise Control-C in that terminal would end the server.
TEST(OpenPath, OfATerminalDoesNotMakeItTheTerminalOfThisProcess) {
  const Descriptor terminal(posix_openpt(O_RDWR | O_NOCTTY));
  ASSERT_TRUE(terminal.isOpen());
  ASSERT_EQ(grantpt(terminal.number()), 0);
  ASSERT_EQ(unlockpt(terminal.number()), 0);
  EXPECT_EQ(inChildProcess([&]() -> std::string {
              setsid();
              const Descriptor seat = openPath(AT_FDCWD, ptsname(terminal.number()), toReadFile);
              if (!seat.isOpen()) return "can't open it";
              const Descriptor own(open("/dev/tty", O_RDONLY | O_CLOEXEC));
              return own.isOpen() ? "has a terminal" : errno == ENXIO ? "has none" : "other error";
            }),
            "has none");
}

}  // namespace
}  // namespace halvane
