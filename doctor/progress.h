#pragma once

// What a person sees while the doctor reads a large journal.

#include <cstddef>

namespace halvane {

/// A line on standard error that shows the progress of reading. It appears only on a terminal and only for
/// many folders or files, and the destructor removes it.
class Progress {
 public:
  Progress();
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Counts a folder that has been entered.
  void countFolder();
  /// Counts a file that has been read.
  void countFile();

 private:
  void show() const;

  bool isSeen_;
  std::size_t folders_ = 0;
  std::size_t files_ = 0;
};

}  // namespace halvane
