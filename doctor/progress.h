#pragma once

// What a person sees while the doctor reads a large journal.

#include <cstddef>

namespace halvane {

/// A line on standard error that says how far the reading is: only where that is a terminal, only when there
/// are many folders or files, and gone when this ends.
class Progress {
 public:
  Progress();
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// One folder more has been entered.
  void countFolder();
  /// One file more has been read.
  void countFile();

 private:
  void show();

  bool isSeen_;
  std::size_t folders_ = 0;
  std::size_t files_ = 0;
};

}  // namespace halvane
