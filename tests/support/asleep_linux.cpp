#include "tests/support/asleep.h"

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "tests/support/wait_until.h"

namespace halvane {
namespace {

// The letter of a process's state. It comes after the process's name, which may contain blanks and brackets.
char stateOf(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  const std::string all((std::istreambuf_iterator<char>(file)), {});
  const std::size_t nameEnd = all.rfind(')');
  if (nameEnd == std::string::npos) throw std::runtime_error("no such process");
  return all.at(nameEnd + 2);
}

}  // namespace

bool waitUntilAsleep(pid_t process) {
  char state = 0;
  waitUntil([&] {
    state = stateOf(process);
    return state == 'S' || state == 'Z';
  });
  return state == 'S';
}

}  // namespace halvane
