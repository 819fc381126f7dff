#pragma once

// Tells the disk early which files are read next, if they are not in memory already.

#include <sys/types.h>

#include <cstddef>

#include "system/descriptor.h"

namespace halvane {

/// Reads one file after the other, and notices when reads have to wait for the disk. From then on, it pays to
/// open files ahead of their turn and to announce them: the disk reads many files at a time as fast as one.
class ReadAhead {
 public:
  /// The first read of a file: like read(2), with the same arguments, result and errno. Waits for the disk if
  /// it must.
  ssize_t readFirst(int file, char* data, std::size_t size);

  /// Whether a read had to wait for the disk, as far as this was asked. Always false if the system doesn't
  /// tell.
  bool pays() const { return pays_; }

  /// Tells the system that the beginning of `file` will be read soon, and doesn't wait. If the system does
  /// nothing about it, reading only takes longer.
  static void announce(const Descriptor& file);

 private:
  // Asking takes some time, so we ask about one file in sixteen. Fifteen others may wait for the disk before
  // we notice.
  bool isToAsk() { return asks_ && count_++ % 16 == 0; }

  bool asks_ = true;  // the system whether a file is in memory
  bool pays_ = false;
  std::size_t count_ = 0;
};

}  // namespace halvane
