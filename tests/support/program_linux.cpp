#include <unistd.h>

#include "tests/support/program.h"

namespace halvane {

void Program::execute(char** arguments, char** variables) const {
  fexecve(descriptor_, arguments, variables);
}

}  // namespace halvane
