#pragma once

// Open files and folders as the system numbers them, and how one is opened to read it.

#include <fcntl.h>

#include <string_view>
#include <utility>

namespace halvane {

/// Owns an open file or folder of the system's, and closes it.
class Descriptor {
 public:
  /// Takes over the file descriptor `number`. A negative number means that nothing is open.
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor();

  int number() const { return number_; }
  bool isOpen() const { return number_ >= 0; }

 private:
  int number_;
};

/// The flags of open(2) to read a file. We must not wait for a pipe without a writer, and a terminal must not
/// become our controlling terminal.
inline constexpr int toReadFile = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

/// The flags to list a folder. Opening anything else with them fails.
inline constexpr int toReadFolder = toReadFile | O_DIRECTORY;

/// Opens the file or folder `name` (ending in a NUL) in the open folder `folder`, and tries again when a
/// signal interrupts the call. When the system refuses, the result is not open, and errno says why.
Descriptor openName(int folder, const char* name, int flags);

/// Opens `path` (raw bytes, of any length), which begins at `folder` where it is not absolute. Not open when
/// the system refuses, which errno then explains, or when the path holds a NUL.
Descriptor openPath(int folder, std::string_view path, int flags);

}  // namespace halvane
