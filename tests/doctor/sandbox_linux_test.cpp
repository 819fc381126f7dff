#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "tests/doctor/doctor_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/lesser_kernel.h"
#include "tests/support/temporary_home.h"

namespace halvane {
namespace {

constexpr const char* tracer = "/usr/bin/strace";

// The system calls of a doctor in this home, in their order, as the tracer writes them.
std::vector<std::string> callsOfDoctor(const TemporaryHome& home) {
  const std::string trace = home.below("trace");
  const std::string command = "env -i HOME=" + home.path() + " " + tracer + " -o " + trace + " " +
                              HALVANE_DOCTOR + " >" + home.below("report");
  EXPECT_EQ(std::system(command.c_str()), 0);
  std::vector<std::string> calls;
  std::ifstream file(trace);
  for (std::string line; std::getline(file, line);) calls.push_back(line);
  return calls;
}

auto firstWith(const std::vector<std::string>& calls, const std::string& text) {
  return std::find_if(calls.begin(), calls.end(),
                      [&](const std::string& call) { return call.find(text) != std::string::npos; });
}

// What the kernel refuses from then on is told by the tests of the server, which enters the same.
TEST(Sandbox, IsEnteredBeforeAnythingOfTheUserIsRead) {
  if (access(tracer, X_OK) != 0) GTEST_SKIP() << "there is no strace here";
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  const std::vector<std::string> calls = callsOfDoctor(home);
  const auto filter = firstWith(calls, "PR_SET_SECCOMP");
  const auto reading = firstWith(calls, home.below(".config"));
  ASSERT_NE(filter, calls.end());
  ASSERT_NE(reading, calls.end());
  EXPECT_LT(filter, reading);
}

TEST(Sandbox, IsMentionedWhereTheKernelLacksPartOfIt) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  const std::string heading = "What the sandbox does not refuse here\n  This Linux ";
  const auto answerWithout = [&](const std::vector<RefusedCall>& calls) {
    return callDoctor({.home = home.path(), .before = [&] { refuseCalls(calls); }});
  };
  EXPECT_TRUE(answerWithout(callsOfLandlock()).says(heading + "offers no Landlock"));
  EXPECT_TRUE(answerWithout(callsOfFilters()).says(heading)) << "whatever Landlock it has";
  EXPECT_EQ(answerWithout(callsOfLandlock()).status, 0) << "nothing is wrong with the journal";
}

TEST(Sandbox, IsNotMentionedWhereItIsWhole) {
  if (versionOfLandlock() == 0) GTEST_SKIP() << "this kernel has no Landlock";
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  EXPECT_FALSE(callDoctor({.home = home.path()}).says("What the sandbox does not refuse"));
}

}  // namespace
}  // namespace halvane
