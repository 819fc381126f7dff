#include <gtest/gtest.h>
#include <unistd.h>

#include <ostream>

#include "tests/doctor/doctor_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

// A journalRoot that depends on the folder in which a program is started. The doctor of these tests is
// started in the root folder.

namespace halvane {
namespace {

struct Setting {
  const char* name;
  std::string journalRoot;
  std::string root;  // as the doctor sees it
  std::string line;  // what it says, after the mark; empty for nothing
};

void PrintTo(const Setting& setting, std::ostream* out) {
  *out << setting.name;
}

class RelativeRoot : public testing::TestWithParam<Setting> {};

TEST_P(RelativeRoot, NeedsAttention) {
  const TemporaryHome home;
  home.setJournalRoot(primarySuite, GetParam().journalRoot);
  const Answer given = callDoctor({.home = home.path()});
  EXPECT_TRUE(given.says("\nWhere the journal is\n  " + GetParam().root + "\n")) << given.output;
  EXPECT_TRUE(given.says("\n! The preference journalRoot is " + GetParam().line)) << given.output;
  EXPECT_EQ(given.status, 1);
}

const std::string nowhere = "nowhere-at-all";

INSTANTIATE_TEST_SUITE_P(
    Of, RelativeRoot,
    testing::Values(Setting{"AName", nowhere, "/" + nowhere,
                            "not an absolute path. The server looks for " + nowhere +
                                " below the folder in which its client starts it.\n"},
                    Setting{"AUserThatNobodyIs", "~nobody-at-all/Journal", "/~nobody-at-all/Journal",
                            "not an absolute path. The server looks for ~nobody-at-all/Journal below"}),
    [](const testing::TestParamInfo<Setting>& tested) { return std::string(tested.param.name); });

TEST(EmptyRoot, NeedsAttentionThoughTheDoctorFindsEntriesInItsOwnFolder) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  home.setJournalRoot(primarySuite, "");
  const Answer given = callDoctor({.home = home.path(), .before = [&] {
                                     if (chdir(home.journal().c_str()) != 0) _exit(1);
                                   }});
  EXPECT_TRUE(given.says("Entries among them: 1\n")) << given.output;
  EXPECT_TRUE(
      given.says("\n! The preference journalRoot is empty. The server uses the folder in which its client "
                 "starts it.\n"))
      << given.output;
  EXPECT_EQ(given.status, 1);
}

TEST(AbsoluteRoot, NeedsNoAttention) {
  const TemporaryHome home;
  writeFile(home.below("Journal/a.md"), EntryFile{}.text());
  for (const std::string& root : {std::string("~/Journal"), home.below("Journal")}) {
    home.setJournalRoot(primarySuite, root);
    EXPECT_EQ(callDoctor({.home = home.path()}).status, 0) << root;
  }
}

}  // namespace
}  // namespace halvane
