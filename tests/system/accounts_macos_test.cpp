#include "system/accounts.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <unistd.h>

#include <optional>

#include "tests/support/scoped_variable.h"

namespace halvane {
namespace {

TEST(HomeDirectory, IsHomeWhereThatIsSetAndAbsolute) {
  const ScopedVariable home("HOME", "/somewhere/else");
  EXPECT_EQ(homeDirectory(), "/somewhere/else");
}

TEST(HomeDirectory, IsTheAccountsWhereHomeIsUnsetOrEmptyOrRelative) {
  const std::string own = getpwuid(getuid())->pw_dir;
  for (const std::optional<std::string>& value :
       {std::optional<std::string>(), std::optional<std::string>(""),
        std::optional<std::string>("relative")}) {
    const ScopedVariable home("HOME", value);
    EXPECT_EQ(homeDirectory(), own);
  }
}

TEST(HomeDirectory, OfAnotherUserIsTheAccounts) {
  EXPECT_EQ(homeDirectoryOf("root"), getpwnam("root")->pw_dir);
  EXPECT_EQ(homeDirectoryOf("nobody that is here"), std::nullopt);
  EXPECT_EQ(homeDirectoryOf(std::string("root\0", 5)), std::nullopt);
  EXPECT_EQ(homeDirectoryOf(""), std::nullopt);
}

}  // namespace
}  // namespace halvane
