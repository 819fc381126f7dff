#include <unistd.h>

#include "tests/support/program.h"

namespace halvane {

void Program::execute(char** arguments, char** variables) const {
  execve(path_.c_str(), arguments, variables);
}

}  // namespace halvane
