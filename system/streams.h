#pragma once

// Lines read from a stream and texts written to one, whole and without waiting in vain.

#include <cstddef>
#include <optional>
#include <string_view>

#include "system/byte_buffer.h"

namespace halvane {

/// Cuts what comes from a file descriptor into lines, in time linear in what comes and with no limit on a
/// line's length.
class LineReader {
 public:
  /// Reads from `descriptor`, which stays the caller's.
  explicit LineReader(int descriptor) : descriptor_(descriptor) {}

  /// The next line, raw bytes without the line feed that ends it; valid until the next call. The last line
  /// counts without a line feed. Nothing at the end of input, and any error of read(2) but EINTR and EAGAIN
  /// is that end. A line for which no memory can be had is passed over. The memory of a very long line is
  /// given back when the next one is asked for.
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

/// Writes `bytes` to `descriptor`: in one write(2) where the kernel takes them whole, otherwise again until
/// all are out. EINTR is retried and EAGAIN waited for. The count of bytes written: fewer than asked for only
/// after another error. SIGPIPE is the caller's to ignore.
std::size_t writeWhole(int descriptor, std::string_view bytes);

}  // namespace halvane
