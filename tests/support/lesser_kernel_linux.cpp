#include "tests/support/lesser_kernel.h"

#include <linux/filter.h>
#include <linux/landlock.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <stdexcept>

namespace halvane {
namespace {

void append(std::vector<sock_filter>& program, const RefusedCall& call) {
  const auto number = static_cast<std::uint32_t>(call.number);
  const auto answer = SECCOMP_RET_ERRNO | static_cast<std::uint32_t>(call.error);
  const auto argument = static_cast<std::uint32_t>(offsetof(seccomp_data, args) + 8 * call.argument);
  program.push_back({BPF_LD | BPF_W | BPF_ABS, 0, 0, offsetof(seccomp_data, nr)});
  if (call.value) {
    program.push_back({BPF_JMP | BPF_JEQ | BPF_K, 0, 3, number});
    program.push_back({BPF_LD | BPF_W | BPF_ABS, 0, 0, argument});
    program.push_back({BPF_JMP | BPF_JEQ | BPF_K, 0, 1, *call.value});
  } else {
    program.push_back({BPF_JMP | BPF_JEQ | BPF_K, 0, 1, number});
  }
  program.push_back({BPF_RET | BPF_K, 0, 0, answer});
}

}  // namespace

bool canRefuseCalls() {
  return prctl(PR_GET_SECCOMP) >= 0;
}

void refuseCalls(const std::vector<RefusedCall>& calls) {
  std::vector<sock_filter> program;
  for (const RefusedCall& call : calls) append(program, call);
  program.push_back({BPF_RET | BPF_K, 0, 0, SECCOMP_RET_ALLOW});
  const sock_fprog filter{static_cast<unsigned short>(program.size()), program.data()};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
      prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter, 0, 0) != 0)
    throw std::runtime_error("the filter is refused");
}

long versionOfLandlock() {
  const long version = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
  return std::max(version, 0L);
}

std::vector<RefusedCall> callsOfLandlock() {
  return {{SYS_landlock_create_ruleset, ENOSYS},
          {SYS_landlock_add_rule, ENOSYS},
          {SYS_landlock_restrict_self, ENOSYS}};
}

std::vector<RefusedCall> callsOfFilters() {
  return {{SYS_seccomp, ENOSYS}, {SYS_prctl, EINVAL, 0, PR_SET_SECCOMP}};
}

}  // namespace halvane
