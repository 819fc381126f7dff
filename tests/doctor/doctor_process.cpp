#include "tests/doctor/doctor_process.h"

#include <fcntl.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <exception>
#include <memory>
#include <stdexcept>

namespace halvane {
namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File temporaryFile() {
  File file(std::tmpfile(), &std::fclose);
  if (!file) throw std::runtime_error("no temporary file");
  fcntl(fileno(file.get()), F_SETFD, FD_CLOEXEC);
  return file;
}

std::string contentOf(std::FILE* file) {
  std::string content;
  std::array<char, 4096> block;
  std::rewind(file);
  for (std::size_t count; (count = std::fread(block.data(), 1, block.size(), file)) > 0;) {
    content.append(block.data(), count);
  }
  return content;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

// The program is open already: the user that the process becomes may have no way to it. Of a variable that is
// named twice the C library takes the first.
[[noreturn]] void becomeDoctor(int program, const Call& call) {
  try {
    if (chdir("/") != 0) throw std::runtime_error("no current folder");
    if (call.before) call.before();
    std::vector<std::string> arguments = {"halvane_doctor"};
    arguments.insert(arguments.end(), call.arguments.begin(), call.arguments.end());
    std::vector<std::string> variables = call.variables;
    variables.insert(variables.end(),
                     {"HOME=" + call.home, "PATH=/usr/bin:/bin", "LC_ALL=en_US.UTF-8", "TZ=UTC"});
    fexecve(program, pointersTo(arguments).data(), pointersTo(variables).data());
  } catch (const std::exception& trouble) {
    dprintf(STDERR_FILENO, "%s\n", trouble.what());
  }
  _exit(127);
}

// Into the released program no library can be loaded before its own; it has a twin for that.
const char* programFor(const Call& call) {
  for (const std::string& variable : call.variables)
    if (variable.starts_with("LD_PRELOAD=")) return HALVANE_DOCTOR_PRELOADABLE;
  return HALVANE_DOCTOR;
}

int openProgram(const Call& call) {
  const int program = open(programFor(call), O_RDONLY | O_CLOEXEC);
  if (program < 0) throw std::runtime_error("can't open the doctor");
  return program;
}

int waitFor(pid_t process) {
  int status = 0;
  waitpid(process, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace

Answer callDoctor(const Call& call) {
  const File output = temporaryFile();
  const File errors = temporaryFile();
  const int program = openProgram(call);
  const pid_t process = fork();
  if (process < 0) throw std::runtime_error("no process");
  if (process == 0) {
    dup2(fileno(output.get()), STDOUT_FILENO);
    dup2(fileno(errors.get()), STDERR_FILENO);
    becomeDoctor(program, call);
  }
  close(program);
  const int status = waitFor(process);
  return {status, contentOf(output.get()), contentOf(errors.get())};
}

Answer callDoctorAtTerminal(const Call& call) {
  const int program = openProgram(call);
  int terminal = -1;
  const pid_t process = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (process < 0) throw std::runtime_error("no terminal");
  if (process == 0) becomeDoctor(program, call);
  close(program);
  std::string output;
  std::array<char, 4096> block;
  // The reading ends with an error when the last process at the terminal has ended.
  for (ssize_t count; (count = read(terminal, block.data(), block.size())) > 0;) {
    output.append(block.data(), static_cast<std::size_t>(count));
  }
  close(terminal);
  return {waitFor(process), output, ""};
}

}  // namespace halvane
