#pragma once

#include <sys/types.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace halvane {

/// A program that runs beside us, its standard input and output being pipes to us. It gets the bare
/// environment that clients give a server, HOME and PATH. All operations throw std::runtime_error when they
/// fail.
class Child {
 public:
  /// Starts `command` (a program's path or a name on PATH, then its arguments) with `home` as HOME.
  Child(const std::vector<std::string>& command, const std::string& home);
  /// Closes both pipes and waits for the end.
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  pid_t pid() const { return pid_; }

  /// Writes all of `bytes` to its standard input; waits where the pipe is full.
  void write(std::string_view bytes);
  /// The next line of its standard output, without the line feed; valid until the next reading.
  std::string_view readLine();
  /// Passes over `count` bytes of its standard output.
  void skip(std::size_t count);
  /// Closes its standard input, waits for its end, and returns all that it still writes.
  std::string finish();

 private:
  bool readMore();
  void waitForEnd();

  pid_t pid_ = -1;
  int input_ = -1;   // we write here
  int output_ = -1;  // and read here
  std::string unread_;
  std::size_t begin_ = 0;  // of what was not handed out yet
};

}  // namespace halvane
