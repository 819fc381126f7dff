#include "tests/support/child_process.h"

#include <grp.h>
#include <pwd.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <exception>
#include <stdexcept>

namespace halvane {
namespace {

[[noreturn]] void workFor(int pipe, const std::function<std::string()>& work) {
  int status = 1;
  try {
    const std::string result = work();
    std::size_t sent = 0;
    while (sent < result.size()) {
      const ssize_t count = write(pipe, result.data() + sent, result.size() - sent);
      if (count <= 0) break;
      sent += static_cast<std::size_t>(count);
    }
    status = sent == result.size() ? 0 : 1;
  } catch (const std::exception&) {
  }
  _exit(status);
}

}  // namespace

std::string inChildProcess(const std::function<std::string()>& work) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no child process");
  if (child == 0) {
    close(ends[0]);
    workFor(ends[1], work);
  }
  close(ends[1]);
  std::string result;
  std::array<char, 4096> block;
  for (ssize_t count; (count = read(ends[0], block.data(), block.size())) > 0;) {
    result.append(block.data(), static_cast<std::size_t>(count));
  }
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) throw std::runtime_error("the child process failed");
  return result;
}

void becomeOrdinaryUser() {
  if (geteuid() != 0) return;
  const passwd* nobody = getpwnam("nobody");
  if (nobody == nullptr || setgroups(0, nullptr) != 0 || setgid(nobody->pw_gid) != 0 ||
      setuid(nobody->pw_uid) != 0) {
    throw std::runtime_error("can't become an ordinary user");
  }
}

}  // namespace halvane
