#include "fuzz/steps.h"

#include <fcntl.h>
#include <sanitizer/allocator_interface.h>
#include <sys/stat.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <string>

#include "fuzz/property.h"

// The linker puts the functions with __wrap_ in place of those that have __real_ before their names here
// (--wrap). This file is compiled without calls of theirs.

namespace halvane {
namespace {

std::uint64_t steps = 0;

void countMemory(const volatile void* /*memory*/, std::size_t size) {
  steps += size;
}

void countNoMemory(const volatile void* /*memory*/) {}

[[maybe_unused]] const int hooks = __sanitizer_install_malloc_and_free_hooks(countMemory, countNoMemory);

// The largest share of its cost that any work has taken, in thousandths.
struct LargestShare {
  std::uint64_t value = 0;
  std::uint64_t steps = 0;
  std::size_t bytes = 0;
  ~LargestShare() {
    std::fprintf(stderr, "cost: at most %.1f %% of what is allowed (%llu steps for %zu bytes)\n",
                 static_cast<double>(value) / 10, static_cast<unsigned long long>(steps), bytes);
  }
};

}  // namespace

std::uint64_t stepsTaken() {
  return steps;
}

void Cost::mustCover(std::uint64_t taken, std::size_t bytes) const {
  static LargestShare largest;
  const std::uint64_t allowed = atMost + aByte * bytes;
  const std::uint64_t share = taken * 1000 / allowed;
  if (share > largest.value) {
    largest.value = share;
    largest.steps = taken;
    largest.bytes = bytes;
  }
  const std::string words =
      std::to_string(taken) + " steps are too many for " + std::to_string(bytes) + " bytes";
  mustHold(taken <= allowed, ("the cost grows with the size and no faster: " + words).c_str());
}

}  // namespace halvane

extern "C" {

#define HALVANE_COUNTED(name, type)           \
  void __real_##name(type left, type right);  \
  void __wrap_##name(type left, type right);  \
  void __wrap_##name(type left, type right) { \
    ++halvane::steps;                         \
    __real_##name(left, right);               \
  }

HALVANE_COUNTED(__sanitizer_cov_trace_cmp1, std::uint8_t)
HALVANE_COUNTED(__sanitizer_cov_trace_cmp2, std::uint16_t)
HALVANE_COUNTED(__sanitizer_cov_trace_cmp4, std::uint32_t)
HALVANE_COUNTED(__sanitizer_cov_trace_cmp8, std::uint64_t)
HALVANE_COUNTED(__sanitizer_cov_trace_const_cmp1, std::uint8_t)
HALVANE_COUNTED(__sanitizer_cov_trace_const_cmp2, std::uint16_t)
HALVANE_COUNTED(__sanitizer_cov_trace_const_cmp4, std::uint32_t)
HALVANE_COUNTED(__sanitizer_cov_trace_const_cmp8, std::uint64_t)

int __real_openat(int folder, const char* path, int flags, ...);
int __wrap_openat(int folder, const char* path, int flags, ...);
int __wrap_openat(int folder, const char* path, int flags, ...) {
  halvane::steps += std::strlen(path);
  std::va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
  va_end(arguments);
  return __real_openat(folder, path, flags, mode);
}

}  // extern "C"
