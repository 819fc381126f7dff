#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "tests/doctor/doctor_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"

namespace halvane {
namespace {

TEST(Usage, IsToldToWhoGivesAnArgument) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  for (const char* argument : {"--help", "-v", "", "~/Journal"}) {
    const Answer given = callDoctor({.home = home.path(), .arguments = {argument}});
    EXPECT_EQ(given.errors, "usage: halvane_doctor (it takes no arguments)\n");
    EXPECT_EQ(given.output, "");
    EXPECT_EQ(given.status, 2);
  }
}

TEST(Report, ThatCannotBeWrittenIsNotWell) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  const auto onlyRead = [] { dup2(open("/dev/null", O_RDONLY), STDOUT_FILENO); };
  EXPECT_EQ(callDoctor({.home = home.path(), .before = onlyRead}).status, 1);
}

}  // namespace
}  // namespace halvane
