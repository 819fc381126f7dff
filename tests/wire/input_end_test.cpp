#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>

#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/server_process.h"

// The process ends when its input does, in silence and with status 0, after any input.

namespace halvane {
namespace {

const std::string onePing = R"({"jsonrpc":"2.0","id":1,"method":"ping"})";

Ending endingWith(const TemporaryHome& home, const std::function<void()>& before) {
  ServerProcess server({.home = home.path(), .before = before});
  return server.finish();
}

TEST(InputEnd, AtOnceEndsTheProcessWithoutAWord) {
  const TemporaryHome home;
  ServerProcess server({.home = home.path()});
  EXPECT_EQ(server.finish(), quietEnding);
}

TEST(InputEnd, AfterALineThatIsNotUnderstoodIsAsQuiet) {
  const TemporaryHome home;
  ServerProcess server({.home = home.path()});
  server.write("{\"id\":1,\"meth");
  EXPECT_EQ(server.finish(), quietEnding);
}

TEST(InputEnd, OfANullDeviceIsAtOnce) {
  const TemporaryHome home;
  EXPECT_EQ(endingWith(home, [] { openAs(STDIN_FILENO, "/dev/null", O_RDONLY); }), quietEnding);
}

TEST(InputEnd, OfAFileComesAfterItsLastLine) {
  const TemporaryHome home;
  const std::string file = home.below("requests");
  writeFile(file, onePing + "\n" + onePing);
  const Ending ending = endingWith(home, [&] { openAs(STDIN_FILENO, file, O_RDONLY); });
  EXPECT_EQ(ending.status, 0);
  EXPECT_EQ(std::count(ending.output.begin(), ending.output.end(), '\n'), 2);
}

// What can't be read counts as ended.
TEST(InputEnd, OfAClosedInputIsAtOnce) {
  const TemporaryHome home;
  EXPECT_EQ(endingWith(home, [] { close(STDIN_FILENO); }), quietEnding);
}

TEST(InputEnd, OfAFolderIsAtOnce) {
  const TemporaryHome home;
  EXPECT_EQ(endingWith(home, [] { openAs(STDIN_FILENO, "/", O_RDONLY | O_DIRECTORY); }), quietEnding);
}

TEST(InputEnd, OfAnInputThatIsOnlyForWritingIsAtOnce) {
  const TemporaryHome home;
  EXPECT_EQ(endingWith(home, [] { openAs(STDIN_FILENO, "/dev/null", O_WRONLY); }), quietEnding);
}

TEST(InputEnd, ComesWithoutAnyStreams) {
  const TemporaryHome home;
  const auto closeAll = [] {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) close(stream);
  };
  EXPECT_EQ(endingWith(home, closeAll), quietEnding);
}

}  // namespace
}  // namespace halvane
