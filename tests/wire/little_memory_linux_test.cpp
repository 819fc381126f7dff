#include <gtest/gtest.h>
#include <sys/resource.h>

#include <ostream>

#include "tests/support/entry_file.h"
#include "tests/support/sanitizers.h"
#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

namespace halvane {
namespace {

// What the server may have in all: the system's default for a stack is 8 MiB, and the program itself and
// ICU's data take some 40 MiB of addresses.
struct Limit {
  const char* name;
  __rlimit_resource resource;
  rlim_t bytes;
};

void PrintTo(const Limit& limit, std::ostream* out) {
  *out << limit.name;
}

class LittleMemory : public testing::TestWithParam<Limit> {};

TEST_P(LittleMemory, IsEnoughForAnOrdinaryJournalAndADeepOne) {
  if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer takes more for itself";
  const TemporaryHome home;
  const rlimit limit{GetParam().bytes, GetParam().bytes};
  std::string folder;
  for (int level = 0; level < 100; ++level) folder += "d/";
  const std::string deep = home.write(folder + "a.md", EntryFile{.body = "At the bottom."}.text());
  ServerProcess server({.home = home.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}, .before = [&] {
                          setrlimit(GetParam().resource, &limit);
                        }});
  EXPECT_EQ(askTool(server, "search_entries", R"({"query":"bottom"})"),
            "[Nov 3, 2025 at 9:14 AM] " + deep + "\n…At the bottom.…");
  EXPECT_EQ(askTool(server, "read_entry", "{\"path\":" + jsonString(deep) + "}"),
            "Date: Nov 3, 2025 at 9:14 AM\nDuration: 0s\nCleaned: false\n\nAt the bottom.");
  server.send(std::string(500, '[') + std::string(500, ']'));
  server.send(std::string(100000, '['));
  EXPECT_TRUE(answersPing(server));
  EXPECT_EQ(server.finish(), quietEnding);
}

INSTANTIATE_TEST_SUITE_P(Limits, LittleMemory,
                         testing::Values(Limit{"Stack", RLIMIT_STACK, 128 << 10},
                                         Limit{"AddressSpace", RLIMIT_AS, 64 << 20}),
                         [](const auto& limit) { return limit.param.name; });

}  // namespace
}  // namespace halvane
