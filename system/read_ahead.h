#pragma once

// How the disk learns early which files are read next, where they are not in memory already.

#include <sys/types.h>

#include <cstddef>

#include "system/descriptor.h"

namespace halvane {

/// Reads one file after the other, and notices when the disk has to be waited for. From then on it pays to
/// open files ahead of their turn and to announce them: the disk brings many at a time as fast as one.
class ReadAhead {
 public:
  /// The first reading of a file: what read(2) does, with the same arguments, result and errno. Waits for the
  /// disk where it must.
  ssize_t readFirst(int file, char* data, std::size_t size);

  /// Whether a read had to wait for the disk. Never, where the system doesn't tell.
  bool pays() const { return pays_; }

  /// Tells the system that the beginning of `file` is read soon; doesn't wait for it. Nothing but time
  /// depends on whether the system listens.
  static void announce(const Descriptor& file);

 private:
  // Asking for every file would make each take up to a tenth longer.
  bool isTimeToAsk() { return asks_ && filesRead_++ % 8 == 0; }

  bool asks_ = true;  // the system, now and then, whether what is read is in memory
  std::size_t filesRead_ = 0;
  bool pays_ = false;
};

}  // namespace halvane
