#include "system/sandbox.h"

// Declared in <sandbox.h>, a system header that is deprecated without a successor for command-line programs.
extern "C" {
int sandbox_init(const char* profile, unsigned long long flags, char** error);
void sandbox_free_error(char* error);
extern const char kSBXProfileNoWrite[];
}

namespace halvane::sandbox {

void enterReadOnly() {
  constexpr unsigned long long namedProfile = 0x0001;  // SANDBOX_NAMED
  char* error = nullptr;
  if (sandbox_init(kSBXProfileNoWrite, namedProfile, &error) != 0) sandbox_free_error(error);
}

}  // namespace halvane::sandbox
