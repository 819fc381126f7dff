#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "system/accounts.h"
#include "tests/support/child_process.h"
#include "tests/support/file_system_root.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/written_file.h"

namespace halvane {
namespace {

using namespace std::string_literals;

// What `answer` gives in a system whose accounts file holds `accounts`, with "@" for the number of the user
// who runs this; nothing where we may not make such a system.
std::optional<std::string> withAccounts(const std::string& accounts,
                                        const std::function<std::string()>& answer) {
  const TemporaryFolder system;
  makeFolder(system.below("etc"));
  const std::string result = inChildProcess([&]() -> std::string {
    if (!takeAsRoot(system.path())) return "not allowed";
    std::string file = accounts;
    for (std::size_t at = 0; (at = file.find('@')) != std::string::npos;)
      file.replace(at, 1, std::to_string(getuid()));
    if (!file.empty()) writeFile("/etc/passwd", file);
    return answer();
  });
  return result == "not allowed" ? std::nullopt : std::optional(result);
}

std::string shown(const std::optional<std::string>& home) {
  return home.value_or("nobody");
}

#define ASSUME_ALLOWED(result) \
  if (!(result)) GTEST_SKIP() << "this user may not change the root of the file system"

constexpr const char* household =
    "root:x:4242:0:root:/elsewhere:/bin/sh\n"
    "ann:x:@:100:Ann:/home/ann:/bin/sh\n"
    "ann2:x:@:100:Ann again:/home/ann2:/bin/sh\n"
    "bob:x:4243:100:Bob:/home/bob:/bin/sh\n"
    "daemon:x:4244:100::relative:/bin/sh\n"
    "élise:x:4245:100::/home/élise:/bin/sh\n";

TEST(HomeDirectory, IsHomeWhereThatIsSetAndAbsolute) {
  const ScopedVariable home("HOME", "/somewhere/else");
  EXPECT_EQ(homeDirectory(), "/somewhere/else");
}

TEST(HomeDirectory, IsTheAccountsWhereHomeIsUnsetOrEmptyOrRelative) {
  for (const std::optional<std::string>& value :
       {std::optional<std::string>(), std::optional<std::string>(""),
        std::optional<std::string>("relative/home")}) {
    const ScopedVariable home("HOME", value);
    const auto result = withAccounts(household, [] { return homeDirectory(); });
    ASSUME_ALLOWED(result);
    EXPECT_EQ(result, "/home/ann") << value.value_or("unset");
  }
}

TEST(HomeDirectory, IsTheRootWhereThereIsNoAccount) {
  const ScopedVariable home("HOME", std::nullopt);
  for (const char* accounts :
       {"", "bob:x:4243:100:Bob:/home/bob:/bin/sh\n", "ann:x:@:100:Ann:relative:/bin/sh\n"}) {
    const auto result = withAccounts(accounts, [] { return homeDirectory(); });
    ASSUME_ALLOWED(result);
    EXPECT_EQ(result, "/") << accounts;
  }
}

TEST(HomeDirectory, OfAnotherUserComesFromTheLocalAccounts) {
  struct Case {
    std::string name, home;
  };
  for (const Case& c : {Case{"bob", "/home/bob"}, Case{"ann2", "/home/ann2"}, Case{"root", "/elsewhere"},
                        Case{"élise", "/home/élise"}, Case{"carol", "nobody"}, Case{"Bob", "nobody"},
                        Case{"bo", "nobody"}, Case{"bob\0"s, "nobody"}, Case{"daemon", "nobody"}}) {
    const auto result = withAccounts(household, [&c] { return shown(homeDirectoryOf(c.name)); });
    ASSUME_ALLOWED(result);
    EXPECT_EQ(result, c.home) << c.name;
  }
}

}  // namespace
}  // namespace halvane
