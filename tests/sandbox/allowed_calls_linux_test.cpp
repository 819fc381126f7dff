#include "sandbox/allowed_calls_linux.h"

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstddef>
#include <fstream>
#include <functional>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "sandbox/sandbox.h"
#include "tests/support/child_process.h"
#include "tests/support/security_page.h"

// The list of allowed calls, the page that documents it, and what the kernel does with it.

namespace halvane {
namespace {

using Arguments = std::array<unsigned long, 5>;

// A call that carries this as its sixth argument is never made. If the sandbox lets it through, it answers
// `letThrough`. So every call can be tried.
constexpr unsigned long trial = 0x7E57;
constexpr int letThrough = 4000;

void makeTrialsPossible() {
  std::array<sock_filter, 4> program = {{
      {BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, args[5])},
      {BPF_JMP | BPF_JEQ | BPF_K, 0, 1, trial},
      {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ERRNO | letThrough},
      {BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW},
  }};
  const sock_fprog filter{program.size(), program.data()};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
      prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter, 0, 0) != 0)
    throw std::runtime_error("the filter is refused");
}

int answerTo(unsigned long call, const Arguments& arguments) {
  errno = 0;
  syscall(static_cast<long>(call), arguments[0], arguments[1], arguments[2], arguments[3], arguments[4],
          trial);
  const int answer = errno;
  syscall(SYS_getuid, 0, 0, 0, 0, 0, 0);  // the register would keep the mark for calls with fewer arguments
  return answer;
}

// What the list says that the answer is
int listedAnswer(unsigned long call, const Arguments& arguments) {
  using namespace sandbox;
  if (std::find(hiddenCalls.begin(), hiddenCalls.end(), call) != hiddenCalls.end()) return ENOSYS;
  const bool isAllowed = std::any_of(allowedCalls.begin(), allowedCalls.end(), [&](const AllowedCall& row) {
    return row.number == call && (arguments[row.argument] & row.mask) == row.value;
  });
  return isAllowed ? letThrough : EPERM;
}

std::string difference(unsigned long call, const Arguments& arguments) {
  const int answer = answerTo(call, arguments);
  const int listed = listedAnswer(call, arguments);
  if (answer == listed) return "";
  std::ostringstream text;
  text << "call " << call << " (" << std::hex << arguments[0] << ", " << arguments[1] << ", " << arguments[2]
       << "): " << std::dec << answer << " and not " << listed << "\n";
  return text.str();
}

// In a sandbox with trials
std::string inside(const std::function<std::string()>& work) {
  return inChildProcess([&] {
    makeTrialsPossible();
    sandbox::enterReadOnly();
    return work();
  });
}

constexpr unsigned long highestNumber = 1023;  // Linux 6.18 has got to 470

// What the kernel's breakpoints in programs call on x86-64. No filter sees these, and they end any other
// caller.
bool isBreakpoint([[maybe_unused]] unsigned long call) {
#ifdef __x86_64__
  return call == 335 || call == 336;
#else
  return false;
#endif
}

TEST(AllowedCalls, AreAllThatTheKernelLetsThrough) {
  EXPECT_EQ(inside([] {
              std::string differences;
              for (const Arguments& arguments : {Arguments{}, Arguments{~0UL, ~0UL, ~0UL, ~0UL, ~0UL}})
                for (unsigned long call = 0; call <= highestNumber; ++call)
                  if (!isBreakpoint(call)) differences += difference(call, arguments);
              return differences;
            }),
            "");
}

TEST(AllowedCalls, AreLetThroughWithTheArgumentsOfTheirRowsAlone) {
  EXPECT_EQ(inside([] {
              std::string differences;
              for (const sandbox::AllowedCall& row : sandbox::allowedCalls) {
                Arguments arguments{};
                unsigned long& looked = arguments[row.argument];
                looked = row.value;
                differences += difference(row.number, arguments);
                for (int bit = 0; bit < 32; ++bit) {
                  looked = row.value ^ 1UL << bit;
                  differences += difference(row.number, arguments);
                }
              }
              return differences;
            }),
            "");
}

// The kernel looks at the lower half, and so must the filter.
TEST(AllowedCalls, AreNotToldApartByTheUpperHalfOfAnArgument) {
  EXPECT_EQ(inside([] {
              std::string differences;
              for (const sandbox::AllowedCall& row : sandbox::allowedCalls) {
                for (int bit = 0; bit < 32; ++bit) {
                  Arguments arguments{};
                  arguments[row.argument] = (row.value ^ 1UL << bit) | 1UL << 32;
                  differences += difference(row.number, arguments);
                }
              }
              return differences;
            }),
            "");
}

#ifdef __x86_64__
TEST(AllowedCalls, AreNoneOfX32) {
  constexpr unsigned long x32 = 0x40000000;
  EXPECT_EQ(inside([] {
              std::string differences;
              for (unsigned long call = x32; call <= x32 + highestNumber; ++call)
                differences += difference(call, {});
              return differences;
            }),
            "");
}

long callAsOn386(long number) {
  long answer = 0;
  asm volatile("int $0x80" : "=a"(answer) : "a"(number), "b"(0), "c"(0), "d"(0), "S"(0), "D"(0) : "memory");
  return answer;
}

TEST(AllowedCalls, AreNoneOfThe386) {
  constexpr long getpidOn386 = 20;
  try {
    inChildProcess([] { return std::to_string(callAsOn386(getpidOn386)); });
  } catch (const std::runtime_error&) {
    GTEST_SKIP() << "this kernel knows no calls of the 386";
  }
  EXPECT_EQ(inside([] {
              std::set<long> answers;
              for (long call = 0; call <= static_cast<long>(highestNumber); ++call)
                answers.insert(callAsOn386(call));
              return std::to_string(answers.size()) + " answer: " + std::to_string(*answers.begin());
            }),
            "1 answer: -1");
}
#endif

// Words in capital letters, such as the names of flags
std::set<std::string> constantsIn(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](unsigned char byte) { return std::isalnum(byte) == 0 && byte != '_'; },
      ' ');
  std::istringstream words(text);
  std::set<std::string> constants;
  for (std::string word; words >> word;)
    if (std::all_of(word.begin(), word.end(), [](unsigned char byte) { return std::islower(byte) == 0; }) &&
        std::isupper(static_cast<unsigned char>(word[0])) != 0)
      constants.insert(word);
  return constants;
}

using ConstantsByCall = std::map<std::string, std::set<std::string>>;

// Each call that the source allows, on whatever processor, and the constants in its rows
ConstantsByCall writtenInTheSource() {
  std::ifstream file(HALVANE_SOURCE_FOLDER "/sandbox/allowed_calls_linux.h");
  std::stringstream source;
  source << file.rdbuf();
  const std::string text = source.str();
  const std::size_t end = text.find("#ifdef HALVANE_SANITIZED");
  ConstantsByCall calls;
  std::size_t at = text.find("SYS_", text.find("allowedCalls = {"));
  while (at < end) {
    const std::size_t next = std::min(text.find("SYS_", at + 4), end);
    std::size_t nameEnd = at + 4;
    while (std::isalnum(static_cast<unsigned char>(text[nameEnd])) != 0 || text[nameEnd] == '_') ++nameEnd;
    calls[text.substr(at + 4, nameEnd - at - 4)].merge(constantsIn(text.substr(nameEnd, next - nameEnd)));
    at = next;
  }
  return calls;
}

TEST(AllowedCalls, AreAsThePageOnSecuritySays) {
  ConstantsByCall documented;
  for (const auto& [name, arguments] : documentedCalls()) documented[name] = constantsIn(arguments);
  EXPECT_GT(documented.size(), 25U);
  EXPECT_EQ(documented, writtenInTheSource());
}

}  // namespace
}  // namespace halvane
