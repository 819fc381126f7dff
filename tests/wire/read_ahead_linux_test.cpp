#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

#include "tests/support/entry_file.h"
#include "tests/support/sanitizers.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"
#include "tests/wire/tracer.h"

// Some file systems can't say whether a file is in memory, some kernels don't know the question, some don't
// take advice. The answer to the client is the same.

namespace halvane {
namespace {

struct System {
  const char* name;
  const char* asked;    // what becomes of the question, as the tracer takes it
  const char* advised;  // and of the advice
};

constexpr System systems[] = {{"RefusesForThisFileSystem", "error=EOPNOTSUPP", "error=EINVAL"},
                              {"DoesNotKnowTheQuestion", "error=ENOSYS", "error=ENOSYS"},
                              {"ForbidsTheQuestion", "error=EPERM", "error=EPERM"},
                              {"IsInterrupted", "error=EINTR", "error=EINTR"},
                              {"FailsToAnswer", "error=EIO", "error=EIO"},
                              {"HasNothingInMemory", "error=EAGAIN", "retval=0"},
                              {"HasNothingInMemoryAndForbidsAdvice", "error=EAGAIN", "error=EPERM"}};

void PrintTo(const System& system, std::ostream* out) {
  *out << system.name;
}

std::size_t linesIn(const std::string& path) {
  std::ifstream file(path);
  std::size_t lines = 0;
  for (std::string line; std::getline(file, line);) ++lines;
  return lines;
}

class ReadAhead : public testing::TestWithParam<System> {
 protected:
  static constexpr int entries = 100;

  void SetUp() override {
    if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer makes more system calls";
    if (!hasTracer()) GTEST_SKIP() << "there is no strace here";
    for (int i = 0; i < entries; ++i) {
      home_.write(std::to_string(i % 7) + "/" + std::to_string(i) + ".md",
                  EntryFile{.date = "2099-11-03T09:14:00Z", .body = "Harbour " + std::to_string(i)}.text());
    }
  }

  const TemporaryHome home_;
};

TEST_P(ReadAhead, ChangesNoAnswer) {
  ServerProcess plain({.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}});
  const std::string expected = askTool(plain, "list_recent", "{}");
  ASSERT_NE(expected.find("Harbour 99"), std::string::npos);
  const TemporaryFolder folder;
  ServerProcess traced({.home = home_.path(), .before = [&] {
                          becomeTracer(folder.below("trace"),
                                       {"-qq", "-e", "trace=preadv2,fadvise64", "-e",
                                        std::string("inject=preadv2:") + GetParam().asked, "-e",
                                        std::string("inject=fadvise64:") + GetParam().advised},
                                       {"HOME=" + home_.path(), "LC_ALL=en_US.UTF-8", "TZ=UTC"});
                        }});
  EXPECT_EQ(askTool(traced, "list_recent", "{}"), expected);
  EXPECT_EQ(traced.finish(), quietEnding);
  const bool isAdvised = std::string_view(GetParam().asked) == "error=EAGAIN";
  EXPECT_EQ(linesIn(folder.below("trace")), isAdvised ? 1U + entries - 1 : 1U)
      << "asks once, and gives advice for all files but the first";
}

INSTANTIATE_TEST_SUITE_P(WhereTheSystem, ReadAhead, testing::ValuesIn(systems),
                         [](const auto& system) { return std::string(system.param.name); });

}  // namespace
}  // namespace halvane
