#pragma once

// Reads lines from a stream, and writes whole texts to one.

#include <cstddef>
#include <optional>
#include <string_view>

#include "system/byte_buffer.h"

namespace halvane {

/// Cuts the bytes from a file descriptor into lines, in linear time and with no limit on a line's length.
class LineReader {
 public:
  /// Reads from `descriptor`, which stays the caller's.
  explicit LineReader(int descriptor) : descriptor_(descriptor) {}

  /// The next line, raw bytes without the line feed that ends it; valid until the next call. The last line
  /// may lack a line feed. Nothing at the end of input. Any error of read(2) except EINTR and EAGAIN counts
  /// as the end. A line for which there is no memory is passed over. The memory of a very long line is given
  /// back at the next call.
  std::optional<std::string_view> next();

 private:
  bool readMore();
  bool makeRoom();
  void giveBackLongLine();

  int descriptor_;
  ByteBuffer buffer_;
  std::size_t begin_ = 0;    // of the bytes that are not yet handed out
  std::size_t scanned_ = 0;  // up to here they hold no line feed
  std::size_t end_ = 0;
  bool passingOver_ = false;  // inside a line that found no memory
  bool ended_ = false;        // for good, even where a later read(2) would bring more
};

/// Writes `bytes` to `descriptor`, in one write(2) if the kernel takes all of them, otherwise in several.
/// Tries again after EINTR, and waits after EAGAIN. Returns the number of bytes written: fewer than given
/// only after another error. SIGPIPE is the caller's to ignore.
std::size_t writeWhole(int descriptor, std::string_view bytes);

}  // namespace halvane
