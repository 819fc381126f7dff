#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/doctor/doctor_process.h"
#include "tests/support/child_process.h"
#include "tests/support/deep_folder.h"
#include "tests/support/entry_file.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

// What the system doesn't let an ordinary user read, and what it answers.

namespace halvane {
namespace {

class Readability : public testing::Test {
 protected:
  Readability() {
    chmod(home_.path().c_str(), 0755);
    home_.write("open.md", EntryFile{}.text());
    closed_ = home_.write("closed/entry.md", EntryFile{}.text());
  }

  Answer answer() const { return callDoctor({.home = home_.path(), .before = becomeOrdinaryUser}); }
  // What is said while nobody may read `path`.
  Answer answerWithout(const std::string& path) const {
    struct stat before;
    EXPECT_EQ(stat(path.c_str(), &before), 0);
    chmod(path.c_str(), 0);
    const Answer given = answer();
    chmod(path.c_str(), before.st_mode);
    return given;
  }

  const TemporaryHome home_;
  std::string closed_;
};

TEST_F(Readability, OfAnOrdinaryJournalIsGiven) {
  const Answer given = answer();
  EXPECT_TRUE(given.says("\nWhat is in the journal folder\n  The folder can be read.\n")) << given.output;
  EXPECT_EQ(given.status, 0);
}

TEST_F(Readability, OfTheJournalIsDeniedWithTheSystemsAnswer) {
  const Answer given = answerWithout(home_.journal());
  EXPECT_TRUE(given.says("\nWhat is in the journal folder\n! The folder can't be read: Permission denied\n"))
      << given.output;
  EXPECT_EQ(given.status, 1);
}

TEST_F(Readability, OfTheJournalIsDeniedByAFolderOnTheWay) {
  const Answer given = answerWithout(home_.below("Documents"));
  EXPECT_TRUE(given.says("\n! The folder can't be read: Permission denied\n")) << given.output;
  EXPECT_EQ(given.status, 1);
}

TEST_F(Readability, OfAJournalThatIsNotThereIsNone) {
  home_.setJournalRoot(primarySuite, "~/Nowhere");
  const Answer given = answer();
  EXPECT_TRUE(
      given.says("\n! The folder can't be read: No such file or directory\n"
                 "  If your journal is elsewhere, name its folder under the key journalRoot in Halvane's "
                 "preferences.\n"))
      << given.output;
  EXPECT_EQ(given.status, 1);
}

TEST_F(Readability, OfAJournalThatIsAFileIsNone) {
  home_.setJournalRoot(primarySuite, closed_);
  const Answer given = answer();
  EXPECT_TRUE(given.says("\n! The folder can't be read: Not a directory\n")) << given.output;
  EXPECT_EQ(given.status, 1);
}

TEST_F(Readability, OfAFileIsDenied) {
  const Answer given = answerWithout(closed_);
  EXPECT_TRUE(given.says("Files whose names end in .md: 2\n  Entries among them: 1\n")) << given.output;
  EXPECT_TRUE(given.says("\n! closed/entry.md: it can't be read: Permission denied\n")) << given.output;
  EXPECT_EQ(given.status, 1);
}

TEST_F(Readability, OfAFolderIsDenied) {
  const Answer given = answerWithout(home_.journal() + "/closed");
  EXPECT_TRUE(given.says("Files whose names end in .md: 1\n  Entries among them: 1\n")) << given.output;
  EXPECT_TRUE(given.says("\n! closed/: it can't be read: Permission denied\n")) << given.output;
  EXPECT_EQ(given.status, 1);
}

TEST_F(Readability, OfALinkThatLeadsNowhereIsNone) {
  makeLink(home_.journal() + "/link.md", home_.below("nowhere"));
  const Answer given = answer();
  EXPECT_TRUE(given.says("\n! link.md: it can't be read: No such file or directory\n")) << given.output;
  EXPECT_EQ(given.status, 1);
}

TEST_F(Readability, OfALinkToAPipeIsNoneAndNotWaitedFor) {
  makeNamedPipe(home_.below("pipe"));
  chmod(home_.below("pipe").c_str(), 0644);
  makeLink(home_.journal() + "/link.md", home_.below("pipe"));
  const Answer given = answer();
  EXPECT_TRUE(given.says("\n! link.md: it can't be read to its end, or it is not a regular file.\n"))
      << given.output;
}

TEST_F(Readability, ReachesAsDeepAsTheServer) {
  writeFileDeepBelow(home_.journal(), std::string(200, 'd'), 30, "deep.md", EntryFile{}.text());
  const Answer given = answer();
  EXPECT_TRUE(given.says("Entries among them: 3\n")) << given.output;
  EXPECT_EQ(given.status, 0);
}

}  // namespace
}  // namespace halvane
