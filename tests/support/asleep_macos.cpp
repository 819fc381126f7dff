#include "tests/support/asleep.h"

#include <cstdio>
#include <stdexcept>
#include <string>

#include "tests/support/wait_until.h"

namespace halvane {
namespace {

// The letter of a process's state, as ps(1) tells it.
char stateOf(pid_t process) {
  std::FILE* const answer = popen(("ps -o state= -p " + std::to_string(process)).c_str(), "r");
  if (answer == nullptr) throw std::runtime_error("there is no ps");
  const int letter = std::fgetc(answer);
  pclose(answer);
  if (letter == EOF) throw std::runtime_error("no such process");
  return static_cast<char>(letter);
}

}  // namespace

// One that has slept for long is idle, I.
bool waitUntilAsleep(pid_t process) {
  char state = 0;
  waitUntil([&] {
    state = stateOf(process);
    return state == 'S' || state == 'I' || state == 'Z';
  });
  return state == 'S' || state == 'I';
}

}  // namespace halvane
