#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/doctor/doctor_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"

namespace halvane {
namespace {

TEST(Usage, IsToldToWhoGivesAnotherArgument) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  const std::vector<std::vector<std::string>> wrong = {
      {"-v"}, {""}, {"~/Journal"}, {"--help", "--version"}, {"--version", "x"}};
  for (const std::vector<std::string>& arguments : wrong) {
    const Answer given = callDoctor({.home = home.path(), .arguments = arguments});
    EXPECT_EQ(given.errors, "usage: halvane_doctor [--help | --version]\n");
    EXPECT_EQ(given.output, "");
    EXPECT_EQ(given.status, 2);
  }
}

TEST(Usage, IsHelpForWhoAsksForIt) {
  const TemporaryHome home;
  const Answer given = callDoctor({.home = home.path(), .arguments = {"--help"}});
  EXPECT_TRUE(given.output.starts_with("usage: halvane_doctor [--help | --version]\n")) << given.output;
  EXPECT_EQ(given.errors, "");
  EXPECT_EQ(given.status, 0);
}

TEST(Version, IsTold) {
  const TemporaryHome home;
  const Answer given = callDoctor({.home = home.path(), .arguments = {"--version"}});
  EXPECT_EQ(given.output, "halvane_doctor " HALVANE_VERSION "\n");
  EXPECT_EQ(given.errors, "");
  EXPECT_EQ(given.status, 0);
}

TEST(Version, StandsInTheReport) {
  const TemporaryHome home;
  EXPECT_TRUE(callDoctor({.home = home.path()}).output.starts_with("halvane_doctor " HALVANE_VERSION "\n\n"));
}

TEST(Report, ThatCannotBeWrittenIsNotWell) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  const auto onlyRead = [] { dup2(open("/dev/null", O_RDONLY), STDOUT_FILENO); };
  EXPECT_EQ(callDoctor({.home = home.path(), .before = onlyRead}).status, 1);
}

}  // namespace
}  // namespace halvane
