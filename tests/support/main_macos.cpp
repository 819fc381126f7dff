#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

// CoreFoundation reads these two when a process starts and never again. So a test program starts once more
// with them: settings then come from the files of a test's own home directory, and the time zone is UTC.
constexpr const char* ownSettings = "__CFPREFERENCES_AVOID_DAEMON";
constexpr const char* zone = "TZ";

namespace {

bool isSet(const char* variable, std::string_view value) {
  const char* present = std::getenv(variable);
  return present != nullptr && present == value;
}

}  // namespace

int main(int count, char** arguments) {
  if (!isSet(ownSettings, "1") || !isSet(zone, "UTC")) {
    setenv(ownSettings, "1", 1);
    setenv(zone, "UTC", 1);
    execvp(arguments[0], arguments);
    std::perror(arguments[0]);
    return 1;
  }
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
