#include "sandbox/call_filter_linux.h"

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <span>

#include "sandbox/allowed_calls_linux.h"

namespace halvane::sandbox {
namespace {

#if defined(__x86_64__)
constexpr std::uint32_t thisProcessor = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t thisProcessor = AUDIT_ARCH_AARCH64;
#else
// The list was made for the two processors above. For another processor's C library it may be too short.
constexpr std::uint32_t thisProcessor = 0;
#endif
static_assert(thisProcessor == 0 || std::endian::native == std::endian::little,
              "the lower half of an argument comes first");

using Calls = std::span<const AllowedCall>;

constexpr auto inOrderOfNumber(auto calls) {
  std::ranges::sort(calls, {}, &AllowedCall::number);
  return calls;
}

// The program that the kernel runs on a call's number and arguments. Its jumps only lead forwards, so we
// write it from its end to its beginning: each target exists before the jump to it.
class Program {
 public:
  constexpr explicit Program(Calls calls) {
    const std::size_t doesNotExist = answer(SECCOMP_RET_ERRNO | ENOSYS);
    refuse_ = answer(SECCOMP_RET_ERRNO | EPERM);
    allow_ = answer(SECCOMP_RET_ALLOW);
    find(calls);
    for (const std::uint32_t call : hiddenCalls) jump(BPF_JEQ, call, doesNotExist, begin_);
    load(offsetof(seccomp_data, nr));
    jump(BPF_JEQ, thisProcessor, begin_, refuse_);
    load(offsetof(seccomp_data, arch));
  }

  std::span<const sock_filter> code() const { return std::span(code_).subspan(begin_); }

 private:
  // Jumps to the decision for the loaded number. When the kernel takes the program, it runs it once for every
  // number, to learn which calls it can always let through. This is most of the cost, so we search the list
  // by halving and don't walk it.
  constexpr std::size_t find(Calls calls) {
    const std::uint32_t number = calls[calls.size() / 2].number;
    const auto same = std::ranges::lower_bound(calls, number, {}, &AllowedCall::number);
    const auto above = std::ranges::upper_bound(calls, number, {}, &AllowedCall::number);
    if (same == calls.begin() && above == calls.end())
      return jump(BPF_JEQ, number, lookAtArguments(calls), refuse_);
    const auto middle = same == calls.begin() ? above : same;
    const std::size_t upperHalf = find({middle, calls.end()});
    const std::size_t lowerHalf = find({calls.begin(), middle});
    return jump(BPF_JGE, middle->number, upperHalf, lowerHalf);
  }

  // Jumps to the decision of the first row of a call that fits.
  constexpr std::size_t lookAtArguments(Calls rows) {
    std::size_t otherwise = refuse_;
    for (const AllowedCall& row : rows) {
      if (row.mask == 0) return allow_;
      jump(BPF_JEQ, row.value, allow_, otherwise);
      put({BPF_ALU | BPF_AND | BPF_K, 0, 0, row.mask});
      otherwise = load(offsetof(seccomp_data, args) + row.argument * sizeof(std::uint64_t));
    }
    return otherwise;
  }

  // These return where the instruction stands.
  constexpr std::size_t load(std::size_t offset) {
    return put({BPF_LD | BPF_W | BPF_ABS, 0, 0, static_cast<std::uint32_t>(offset)});
  }
  constexpr std::size_t jump(unsigned comparison, std::uint32_t value, std::size_t ifTrue,
                             std::size_t ifFalse) {
    return put({static_cast<std::uint16_t>(BPF_JMP | BPF_K | comparison), distanceTo(ifTrue),
                distanceTo(ifFalse), value});
  }
  constexpr std::size_t answer(std::uint32_t value) { return put({BPF_RET | BPF_K, 0, 0, value}); }
  constexpr std::size_t put(const sock_filter& instruction) {
    code_.at(--begin_) = instruction;
    return begin_;
  }
  constexpr std::uint8_t distanceTo(std::size_t goal) const {
    return static_cast<std::uint8_t>(goal - begin_);
  }

  std::array<sock_filter, 256> code_{};  // as far as a jump reaches
  std::size_t begin_ = code_.size();
  std::size_t refuse_ = 0;
  std::size_t allow_ = 0;
};

constexpr Program program(inOrderOfNumber(allowedCalls));

}  // namespace

bool refuseAllButAllowedCalls() {
  if (thisProcessor == 0) return false;
  const std::span<const sock_filter> code = program.code();
  // The kernel only reads it.
  const sock_fprog filter{static_cast<unsigned short>(code.size()), const_cast<sock_filter*>(code.data())};
  return prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter, 0, 0) == 0;
}

}  // namespace halvane::sandbox
