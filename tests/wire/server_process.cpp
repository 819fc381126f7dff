#include "tests/wire/server_process.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <exception>
#include <stdexcept>
#include <thread>

#include "tests/support/program.h"
#include "tests/support/user_settings.h"

namespace halvane {
namespace {

constexpr std::chrono::milliseconds patience = std::chrono::seconds(30);

struct Pipe {
  int readEnd;
  int writeEnd;
};

Pipe makePipe() {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  for (const int end : ends) fcntl(end, F_SETFD, FD_CLOEXEC);
  return {ends[0], ends[1]};
}

void closeOnce(int& descriptor) {
  if (descriptor >= 0) close(descriptor);
  descriptor = -1;
}

std::vector<std::string> environmentOf(const Surroundings& surroundings) {
  std::vector<std::string> variables = {"PATH=/usr/bin:/bin"};
  if (!surroundings.home.empty()) {
    const std::vector<std::string> ofHome = variablesOfHome(surroundings.home);
    variables.insert(variables.end(), ofHome.begin(), ofHome.end());
  }
  variables.insert(variables.end(), surroundings.variables.begin(), surroundings.variables.end());
  return variables;
}

// Into the released program no library can be loaded before its own; it has a twin for that.
const char* programFor(const Surroundings& surroundings) {
  for (const std::string& variable : surroundings.variables)
    if (variable.starts_with("LD_PRELOAD=")) return HALVANE_MCP_PRELOADABLE;
  return HALVANE_MCP;
}

[[noreturn]] void becomeServer(const Program& program, const Surroundings& surroundings) {
  // What this process ignores, the server would ignore too: a shell's background ignores SIGINT, for example.
  for (int signal = 1; signal < NSIG; ++signal) std::signal(signal, SIG_DFL);
  try {
    if (chdir(surroundings.currentFolder.c_str()) != 0) throw std::runtime_error("no current folder");
    if (surroundings.before) surroundings.before();
    std::vector<std::string> arguments = {"halvane_mcp"};
    arguments.insert(arguments.end(), surroundings.arguments.begin(), surroundings.arguments.end());
    program.become(arguments, environmentOf(surroundings));
  } catch (const std::exception& trouble) {
    dprintf(STDERR_FILENO, "%s\n", trouble.what());
  }
  _exit(127);
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

}  // namespace

void openAs(int stream, const std::string& path, int flags) {
  const int descriptor = open(path.c_str(), flags | O_CLOEXEC, 0666);
  if (descriptor < 0 || dup2(descriptor, stream) < 0) throw std::runtime_error("can't open " + path);
}

std::ostream& operator<<(std::ostream& out, const Ending& ending) {
  return out << "status " << ending.status << ", output \"" << ending.output << "\", errors \""
             << ending.errors << "\"";
}

ServerProcess::ServerProcess(const Surroundings& surroundings) : errors_(std::tmpfile(), &std::fclose) {
  std::signal(SIGPIPE, SIG_IGN);  // a server that is gone must not end the test
  const Program program(programFor(surroundings));
  if (!errors_) throw std::runtime_error("no file for its errors");
  const Pipe in = makePipe();
  const Pipe out = makePipe();
  id_ = fork();
  if (id_ < 0) throw std::runtime_error("no process");
  if (id_ == 0) {
    dup2(in.readEnd, STDIN_FILENO);
    dup2(out.writeEnd, STDOUT_FILENO);
    dup2(fileno(errors_.get()), STDERR_FILENO);
    fcntl(fileno(errors_.get()), F_SETFD, FD_CLOEXEC);
    becomeServer(program, surroundings);
  }
  close(in.readEnd);
  close(out.writeEnd);
  input_ = in.writeEnd;
  output_ = out.readEnd;
}

ServerProcess::~ServerProcess() {
  closeInput();
  closeOutput();
  if (id_ > 0) {
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
  }
}

void ServerProcess::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(input_, bytes.data(), bytes.size());
    if (count < 0) throw std::runtime_error("the server takes no more input");
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

void ServerProcess::closeInput() {
  closeOnce(input_);
}

std::optional<std::string> ServerProcess::receive() {
  std::size_t end;
  while ((end = received_.find('\n', searched_)) == std::string::npos) {
    searched_ = received_.size();
    if (!readMore()) return std::nullopt;
  }
  searched_ = 0;
  std::string line = received_.substr(0, end);
  received_.erase(0, end + 1);
  return line;
}

void ServerProcess::closeOutput() {
  closeOnce(output_);
}

Ending ServerProcess::finish() {
  closeInput();
  while (readMore()) {
  }
  const int status = waitForExit();
  return {status, received_, contentOf(errors_.get())};
}

bool ServerProcess::readMore() {
  std::array<char, 65536> block;
  pollfd waiting{output_, POLLIN, 0};
  if (output_ < 0 || poll(&waiting, 1, static_cast<int>(patience.count())) <= 0) return false;
  const ssize_t count = read(output_, block.data(), block.size());
  if (count <= 0) return false;
  received_.append(block.data(), static_cast<std::size_t>(count));
  return true;
}

int ServerProcess::waitForExit() {
  const auto end = std::chrono::steady_clock::now() + patience;
  int status = 0;
  rusage used{};
  while (wait4(id_, &status, WNOHANG, &used) == 0) {
    if (std::chrono::steady_clock::now() > end) kill(id_, SIGKILL);
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  id_ = -1;
  peakMemory_ = static_cast<std::size_t>(used.ru_maxrss) * 1024;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

}  // namespace halvane
