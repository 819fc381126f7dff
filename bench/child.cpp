#include "bench/child.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <stdexcept>

namespace halvane {
namespace {

void check(int error, const std::string& what) {
  if (error != 0) throw std::runtime_error(what + ": " + std::strerror(error));
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  pointers.reserve(texts.size() + 1);
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

void closeOnce(int& descriptor) {
  if (descriptor >= 0) close(descriptor);
  descriptor = -1;
}

}  // namespace

Child::Child(const std::vector<std::string>& command, const std::string& home) {
  std::array<int, 2> toChild;
  std::array<int, 2> fromChild;
  if (pipe2(toChild.data(), O_CLOEXEC) != 0 || pipe2(fromChild.data(), O_CLOEXEC) != 0) check(errno, "pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, toChild[0], STDIN_FILENO);
  posix_spawn_file_actions_adddup2(&actions, fromChild[1], STDOUT_FILENO);
  const char* path = std::getenv("PATH");
  std::vector<std::string> arguments = command;
  std::vector<std::string> environment = {"HOME=" + home,
                                          std::string("PATH=") + (path != nullptr ? path : "")};
  const int error = posix_spawnp(&pid_, command.front().c_str(), &actions, nullptr,
                                 pointersTo(arguments).data(), pointersTo(environment).data());
  posix_spawn_file_actions_destroy(&actions);
  close(toChild[0]);
  close(fromChild[1]);
  input_ = toChild[1];
  output_ = fromChild[0];
  check(error, "can't start " + command.front());
}

Child::~Child() {
  closeOnce(input_);
  closeOnce(output_);
  waitForEnd();
}

void Child::write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(input_, bytes.data(), bytes.size());
    if (count < 0) check(errno, "writing to a child");
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

std::string_view Child::readLine() {
  std::size_t scanned = begin_;
  for (;;) {
    const std::size_t end = unread_.find('\n', scanned);
    if (end != std::string::npos) {
      const std::string_view line = std::string_view(unread_).substr(begin_, end - begin_);
      begin_ = end + 1;
      return line;
    }
    scanned = unread_.size() - begin_;
    unread_.erase(0, begin_);
    begin_ = 0;
    if (!readMore()) throw std::runtime_error("a child ended before it answered");
  }
}

void Child::skip(std::size_t count) {
  for (;;) {
    const std::size_t here = std::min(count, unread_.size() - begin_);
    begin_ += here;
    count -= here;
    if (count == 0) return;
    unread_.clear();
    begin_ = 0;
    if (!readMore()) throw std::runtime_error("a child ended before it answered");
  }
}

std::string Child::finish() {
  closeOnce(input_);
  while (readMore()) {
  }
  waitForEnd();
  return unread_.substr(begin_);
}

void Child::waitForEnd() {
  if (pid_ > 0) waitpid(pid_, nullptr, 0);
  pid_ = -1;
}

bool Child::readMore() {
  std::array<char, 65536> block;
  const ssize_t count = read(output_, block.data(), block.size());
  if (count < 0) check(errno, "reading from a child");
  unread_.append(block.data(), static_cast<std::size_t>(count));
  return count > 0;
}

}  // namespace halvane
