#include "tests/wire/process_state.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <string>

#include "tests/wire/wait_until.h"

namespace halvane {
namespace {

std::string folderOf(pid_t process) {
  return "/proc/" + std::to_string(process);
}

// The pages that a process holds; the first number tells its addresses, the second what is resident.
std::size_t pages(pid_t process, int which) {
  std::ifstream file(folderOf(process) + "/statm");
  std::size_t count = 0;
  for (int number = 0; number <= which; ++number) file >> count;
  if (!file) throw std::runtime_error("no such process");
  return count * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

// The fields of a process's stat file behind its name, which may hold blanks: first its state.
std::istringstream stateOf(pid_t process) {
  std::ifstream file(folderOf(process) + "/stat");
  const std::string all((std::istreambuf_iterator<char>(file)), {});
  const std::size_t nameEnd = all.rfind(')');
  if (nameEnd == std::string::npos) throw std::runtime_error("no such process");
  return std::istringstream(all.substr(nameEnd + 2));
}

}  // namespace

std::size_t residentMemory(pid_t process) {
  return pages(process, 1);
}

std::size_t addressSpace(pid_t process) {
  return pages(process, 0);
}

std::size_t openFiles(pid_t process) {
  const std::filesystem::directory_iterator files(folderOf(process) + "/fd");
  return static_cast<std::size_t>(std::distance(begin(files), end(files)));
}

std::chrono::milliseconds processorTime(pid_t process) {
  constexpr int fieldsBefore = 11;
  std::istringstream fields = stateOf(process);
  std::string skipped;
  for (int field = 0; field < fieldsBefore; ++field) fields >> skipped;
  long user = 0;
  long system = 0;
  fields >> user >> system;
  return std::chrono::milliseconds((user + system) * 1000 / sysconf(_SC_CLK_TCK));
}

bool waitUntilAsleep(pid_t process) {
  char state = 0;
  waitUntil([&] {
    stateOf(process) >> state;
    return state == 'S' || state == 'Z';
  });
  return state == 'S';
}

}  // namespace halvane
