#include "system/free_memory.h"

#include <gtest/gtest.h>

#include <new>
#include <string>

#include "tests/support/child_process.h"
#include "tests/support/process_limits.h"
#include "tests/support/sanitizers.h"

namespace halvane {
namespace {

TEST(RequiredMemory, IsRefusedWhereTheSystemWouldNotGiveIt) {
  if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer's own memory leaves no room for a limit";
  if (!canLimitMemory()) GTEST_SKIP() << "the system limits no memory";
  EXPECT_EQ(inChildProcess([]() -> std::string {
              limitFurtherMemory(64 << 20);
              requireMemory(16 << 20);
              try {
                requireMemory(256 << 20);
                return "given";
              } catch (const std::bad_alloc&) {
                requireMemory(16 << 20);
                return "refused, and nothing kept";
              }
            }),
            "refused, and nothing kept");
}

}  // namespace
}  // namespace halvane
