#include "tests/doctor/doctor_process.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <stdexcept>

#include "tests/support/program.h"
#include "tests/support/user_settings.h"

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

// Of a variable that is named twice the C library takes the first.
std::vector<std::string> environmentOf(const Call& call) {
  std::vector<std::string> variables = call.variables;
  const std::vector<std::string> ofHome = variablesOfHome(call.home);
  variables.insert(variables.end(), ofHome.begin(), ofHome.end());
  variables.insert(variables.end(), {"PATH=/usr/bin:/bin", "LC_ALL=en_US.UTF-8", "TZ=UTC"});
  return variables;
}

[[noreturn]] void becomeDoctor(const Program& program, const Call& call) {
  try {
    if (chdir("/") != 0) throw std::runtime_error("no current folder");
    if (call.before) call.before();
    std::vector<std::string> arguments = {"halvane_doctor"};
    arguments.insert(arguments.end(), call.arguments.begin(), call.arguments.end());
    program.become(arguments, environmentOf(call));
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

// A new terminal: the end that shows what is written at the other.
int openTerminal() {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
  if (terminal < 0 || grantpt(terminal) != 0 || unlockpt(terminal) != 0)
    throw std::runtime_error("no terminal");
  fcntl(terminal, F_SETFD, FD_CLOEXEC);
  return terminal;
}

// Makes the other end of `terminal` all three streams of this process.
void sitDownAt(int terminal) {
  setsid();
  const int seat = open(ptsname(terminal), O_RDWR);
  ioctl(seat, TIOCSCTTY, 0);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(seat, stream);
  if (seat > STDERR_FILENO) close(seat);
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
  const Program program(programFor(call));
  const pid_t process = fork();
  if (process < 0) throw std::runtime_error("no process");
  if (process == 0) {
    dup2(fileno(output.get()), STDOUT_FILENO);
    dup2(fileno(errors.get()), STDERR_FILENO);
    becomeDoctor(program, call);
  }
  const int status = waitFor(process);
  return {status, contentOf(output.get()), contentOf(errors.get())};
}

Answer callDoctorAtTerminal(const Call& call, const AtTerminal& meanwhile) {
  const Program program(programFor(call));
  const int terminal = openTerminal();
  const pid_t process = fork();
  if (process < 0) throw std::runtime_error("no process");
  if (process == 0) {
    sitDownAt(terminal);
    becomeDoctor(program, call);
  }
  meanwhile(process, terminal);
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
