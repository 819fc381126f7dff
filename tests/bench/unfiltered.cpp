// Becomes the program that its arguments name, on a kernel that takes no filter of system calls. Valgrind
// runs in the process that it watches, and needs calls that the server's filter refuses.
#include <unistd.h>

#include <exception>
#include <iostream>

#include "tests/support/lesser_kernel.h"

int main(int /*argumentCount*/, char** arguments) {
  try {
    halvane::refuseCalls(halvane::callsOfFilters());
  } catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
  }
  execvp(arguments[1], arguments + 1);
  std::cerr << "can't start " << arguments[1] << '\n';
  return 1;
}
