#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include "tests/support/asleep.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/temporary_home.h"
#include "tests/support/wait_until.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// Replies that can't be written are lost without a word, and the server goes on until its input ends.

namespace halvane {
namespace {

int unreadBytes(const ServerProcess& server) {
  int count = 0;
  ioctl(server.input(), FIONREAD, &count);
  return count;
}

// Sees that a server that can't write reads all that it is sent, lives on, and ends as it should.
void expectToGoOn(ServerProcess& server) {
  for (int id = 0; id < 20; ++id) {
    server.send("{\"id\":1,\"method\":\"ping\"}");
    server.send(toolCall("search_entries", R"({"query":"harbour"})"));
    server.send("{\"id\":1,\"method\":\"none\"}");
  }
  EXPECT_TRUE(waitUntil([&] { return unreadBytes(server) == 0; })) << "it has stopped reading";
  EXPECT_TRUE(waitUntilAsleep(server.id()));
  EXPECT_EQ(server.finish(), quietEnding);
}

class ClosedOutput : public testing::Test {
 protected:
  ClosedOutput() { home_.write("a.md", EntryFile{.body = "Walked to the harbour."}.text()); }

  const TemporaryHome home_;
};

TEST_F(ClosedOutput, OfAClientThatHasGone) {
  ServerProcess server({.home = home_.path()});
  server.closeOutput();
  expectToGoOn(server);
}

TEST_F(ClosedOutput, OfAClientThatGoesLater) {
  ServerProcess server({.home = home_.path()});
  ASSERT_TRUE(answersPing(server));
  server.closeOutput();
  expectToGoOn(server);
}

TEST_F(ClosedOutput, FromTheStart) {
  ServerProcess server({.home = home_.path(), .before = [] { close(STDOUT_FILENO); }});
  expectToGoOn(server);
}

TEST_F(ClosedOutput, OfAFullDevice) {
  if (access("/dev/full", W_OK) != 0) GTEST_SKIP() << "the system has no such device";
  ServerProcess server(
      {.home = home_.path(), .before = [] { openAs(STDOUT_FILENO, "/dev/full", O_WRONLY); }});
  expectToGoOn(server);
}

TEST_F(ClosedOutput, OfAFileThatMayNotGrow) {
  const TemporaryFolder folder;
  ServerProcess server({.home = home_.path(), .before = [&] {
                          openAs(STDOUT_FILENO, folder.below("replies"), O_WRONLY | O_CREAT);
                          const rlimit nothing{0, 0};
                          setrlimit(RLIMIT_FSIZE, &nothing);
                        }});
  expectToGoOn(server);
}

TEST_F(ClosedOutput, OnlyForReading) {
  ServerProcess server(
      {.home = home_.path(), .before = [] { openAs(STDOUT_FILENO, "/dev/null", O_RDONLY); }});
  expectToGoOn(server);
}

}  // namespace
}  // namespace halvane
