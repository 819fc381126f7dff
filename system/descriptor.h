#pragma once

// Open files and folders as the system numbers them, and how one is opened to read it.

#include <fcntl.h>

#include <string_view>
#include <utility>

namespace halvane {

/// Owns an open file or folder of the system's, and closes it.
class Descriptor {
 public:
  /// Takes over the file descriptor `number`; a negative one stands for nothing that is open.
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

/// The flags of open(2) to read a file: a pipe without a writer must not hold us up, and a terminal must not
/// become ours.
inline constexpr int toReadFile = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;

/// The flags to list a folder, and nothing that is none.
inline constexpr int toReadFolder = toReadFile | O_DIRECTORY;

/// Opens what `name`, which ends in a NUL, is in the open folder `folder`, again and again as long as a
/// signal interrupts that. Not open, and errno says why, when the system refuses.
Descriptor openName(int folder, const char* name, int flags);

/// Opens `path` (raw bytes, of any length), which begins at `folder` where it is not absolute. Not open when
/// the system refuses or the path holds a NUL.
Descriptor openPath(int folder, std::string_view path, int flags);

}  // namespace halvane
