#include <gtest/gtest.h>

#include <functional>
#include <ostream>

#include "tests/doctor/doctor_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

// What looks as if the server should read it, but is not read.

namespace halvane {
namespace {

struct NearMiss {
  const char* name;
  std::function<void(const TemporaryHome&)> make;
  std::string line;  // what the doctor says of it, after the mark
};

void PrintTo(const NearMiss& nearMiss, std::ostream* out) {
  *out << nearMiss.name;
}

class PassedOver : public testing::TestWithParam<NearMiss> {};

TEST_P(PassedOver, NeedsAttention) {
  const TemporaryHome home;
  home.write("good.md", EntryFile{}.text());
  GetParam().make(home);
  const Answer given = callDoctor({.home = home.path()});
  EXPECT_TRUE(given.says("\n! " + GetParam().line)) << given.output;
  EXPECT_TRUE(given.says("Entries among them: 1\n")) << given.output;
  EXPECT_FALSE(given.says("All is well")) << given.output;
  EXPECT_EQ(given.status, 1);
}

std::function<void(const TemporaryHome&)> file(const std::string& name) {
  return [=](const TemporaryHome& home) { home.write(name, EntryFile{}.text()); };
}
std::function<void(const TemporaryHome&)> linkToFolder(const std::string& name) {
  return [=](const TemporaryHome& home) {
    makeFolder(home.below("elsewhere"));
    makeLink(home.journal() + "/" + name, home.below("elsewhere"));
  };
}
std::function<void(const TemporaryHome&)> pipeCalled(const std::string& name) {
  return [=](const TemporaryHome& home) { makeNamedPipe(home.journal() + "/" + name); };
}

const std::string otherName = ": the server does not read it: its name must end in .md, in small letters.\n";
const std::string isLink = ": it is a link to a folder, which the server does not enter.\n";

INSTANTIATE_TEST_SUITE_P(
    Of, PassedOver,
    testing::Values(NearMiss{"CapitalLetters", file("2025/a.MD"), "2025/a.MD" + otherName},
                    NearMiss{"OneCapitalLetter", file("a.Md"), "a.Md" + otherName},
                    NearMiss{"TheWholeWord", file("a.markdown"), "a.markdown" + otherName},
                    NearMiss{"AnotherShortForm", file("a.mkd"), "a.mkd" + otherName},
                    NearMiss{"ASecondExtension", file("a.md.txt"), "a.md.txt" + otherName},
                    NearMiss{"ALinkToAFolder", linkToFolder("2024"), "2024" + isLink},
                    NearMiss{"ALinkToAFolderNamedLikeAnEntry", linkToFolder("b.md"), "b.md" + isLink},
                    NearMiss{"APipe", pipeCalled("f.md"), "f.md: it is not a regular file.\n"}),
    [](const testing::TestParamInfo<NearMiss>& tested) { return std::string(tested.param.name); });

TEST(AllElse, IsPassedOverWithoutAWord) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  home.write("photo.jpg", "");
  home.write("md", "");
  home.write("cmd", "");
  home.write("2025.MD/b.md", EntryFile{}.text());
  home.write(".a.MD", "");
  makeNamedPipe(home.journal() + "/pipe");
  makeLink(home.journal() + "/link", home.journal() + "/photo.jpg");
  makeLink(home.journal() + "/broken", home.below("nowhere"));
  const Answer given = callDoctor({.home = home.path()});
  EXPECT_TRUE(given.says("Entries among them: 2\n")) << given.output;
  EXPECT_TRUE(given.output.ends_with("\nAll is well.\n")) << given.output;
}

}  // namespace
}  // namespace halvane
