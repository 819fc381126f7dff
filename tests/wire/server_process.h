#pragma once

#include <sys/types.h>

#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace halvane {

/// The surroundings in which a server starts: as little as a client gives it, and what the test adds.
struct Surroundings {
  /// The home directory of its user; none when empty.
  std::string home = {};
  /// More of the environment, each "NAME=value". PATH is always there, and nothing else.
  std::vector<std::string> variables = {};
  std::vector<std::string> arguments = {};
  std::string currentFolder = "/";
  /// Done in the new process with its streams in place, just before it becomes the server: limits, another
  /// user, a closed stream. What it throws ends the process with status 127.
  std::function<void()> before = {};
};

/// For `before`: opens `path` in place of one of the standard streams, by open(2)'s `flags`.
void openAs(int stream, const std::string& path, int flags);

/// How a server's life ended.
struct Ending {
  int status;          // the exit status; minus the signal's number when a signal ended it
  std::string output;  // what it wrote and nobody received
  std::string errors;  // all that it wrote to standard error

  bool operator==(const Ending&) const = default;
};

/// The end that every server should come to.
inline const Ending quietEnding{0, "", ""};

std::ostream& operator<<(std::ostream& out, const Ending& ending);

/// The real server, as a child process with pipes for its streams. It is killed if it still runs when this
/// ends.
class ServerProcess {
 public:
  explicit ServerProcess(const Surroundings& surroundings);
  ~ServerProcess();
  ServerProcess(const ServerProcess&) = delete;
  ServerProcess& operator=(const ServerProcess&) = delete;

  /// Sends `line` and a line feed. Waits while the pipe is full.
  void send(std::string_view line) { write(std::string(line) + "\n"); }
  void write(std::string_view bytes);
  void closeInput();

  /// The next line of its output, without the line feed; nothing when no whole one comes for half a minute or
  /// the output has ended.
  std::optional<std::string> receive();
  void closeOutput();

  /// Closes its input, and waits for its end, half a minute at most.
  Ending finish();
  /// The most memory that it ever held, in bytes, known when it has ended. No less than what this test held
  /// when it started the server, because the process began as a copy of it. Counted as Linux
  /// counts it.
  std::size_t peakMemory() const { return peakMemory_; }

  pid_t id() const { return id_; }
  /// Our ends of its pipes; -1 when closed.
  int input() const { return input_; }
  int output() const { return output_; }

 private:
  bool readMore();
  int waitForExit();

  pid_t id_ = -1;
  int input_ = -1;
  int output_ = -1;
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> errors_;
  std::string received_;
  std::size_t peakMemory_ = 0;
  std::size_t searched_ = 0;  // so far there is no line feed in what is received
};

}  // namespace halvane
