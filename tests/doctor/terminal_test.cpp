#include <gtest/gtest.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>

#include "tests/doctor/doctor_process.h"
#include "tests/support/asleep.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

// What a terminal gets beyond what a pipe or a file gets.

namespace halvane {
namespace {

const std::string escape = "\x1B";

TEST(Terminal, GetsColours) {
  const TemporaryHome home;
  home.write("a.md", "text");
  const Answer given = callDoctorAtTerminal({.home = home.path()});
  EXPECT_TRUE(given.says(escape + "[1mWhere the journal is" + escape + "[0m\r\n")) << given.output;
  EXPECT_TRUE(given.says(escape + "[31m! a.md: it has no front matter")) << given.output;
  EXPECT_EQ(given.status, 1);
}

TEST(Terminal, AloneGetsColours) {
  const TemporaryHome home;
  home.write("a.md", "text");
  const Answer given = callDoctor({.home = home.path()});
  EXPECT_FALSE(given.says(escape)) << given.output;
}

TEST(Terminal, GetsNoProgressOfAFewFiles) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  EXPECT_FALSE(callDoctorAtTerminal({.home = home.path()}).says("files read:"));
}

class ManyFiles : public testing::Test {
 protected:
  ManyFiles() {
    for (int count = 0; count < 2000; ++count)
      home_.write("e" + std::to_string(count) + ".md", EntryFile{}.text());
  }
  const TemporaryHome home_;
};

TEST_F(ManyFiles, MakeALineOfProgressThatGoesAgain) {
  const Answer given = callDoctorAtTerminal({.home = home_.path()});
  const std::string clearLine = "\r" + escape + "[K";
  EXPECT_TRUE(given.output.starts_with(clearLine + "Folders: 1, files read: 1000, Ctrl-C stops" + clearLine +
                                       "Folders: 1, files read: 2000, Ctrl-C stops" + clearLine + escape +
                                       "[1mhalvane_doctor "))
      << given.output.substr(0, 200);
  EXPECT_EQ(given.status, 0);
}

class ManyFolders : public testing::Test {
 protected:
  ManyFolders() {
    for (int count = 0; count < 1100; ++count) makeFolder(home_.journal() + "/" + std::to_string(count));
  }
  const TemporaryHome home_;
};

TEST_F(ManyFolders, MakeProgressWithoutAFile) {
  const Answer given = callDoctorAtTerminal({.home = home_.path()});
  EXPECT_TRUE(given.output.starts_with("\r" + escape + "[KFolders: 1000, files read: 0, Ctrl-C stops"))
      << given.output.substr(0, 200);
}

// Stops the output of the terminal, as Ctrl-S does: the doctor then waits in the midst of its walk, with its
// line of progress. What would outlive Ctrl-C, the alarm ends. A shell that starts the tests in the
// background makes them ignore Ctrl-C.
void stopOutput() {
  signal(SIGINT, SIG_DFL);
  tcflow(STDOUT_FILENO, TCOOFF);
  alarm(60);
}

TEST_F(ManyFolders, AreLeftAtCtrlC) {
  const Answer given =
      callDoctorAtTerminal({.home = home_.path(), .before = stopOutput}, [](pid_t doctor, int keyboard) {
        EXPECT_TRUE(waitUntilAsleep(doctor));
        EXPECT_EQ(write(keyboard, "\x03", 1), 1);
      });
  EXPECT_EQ(given.status, -SIGINT);
  EXPECT_FALSE(given.says("halvane_doctor ")) << "no report of half a journal";
}

TEST_F(ManyFiles, MakeNoProgressInAFile) {
  const Answer given = callDoctor({.home = home_.path()});
  EXPECT_EQ(given.errors, "");
  EXPECT_FALSE(given.says("files read:"));
}

}  // namespace
}  // namespace halvane
