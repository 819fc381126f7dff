#include "doctor/progress.h"

#include <unistd.h>

#include <string>

#include "system/streams.h"

namespace halvane {
namespace {

constexpr std::size_t many = 1000;
constexpr const char* clearLine = "\r\x1B[K";

}  // namespace

Progress::Progress() : isSeen_(isatty(STDERR_FILENO) == 1) {}

Progress::~Progress() {
  if (isSeen_ && files_ >= many) writeWhole(STDERR_FILENO, clearLine);
}

void Progress::countFile() {
  ++files_;
  if (isSeen_ && files_ % many == 0)
    writeWhole(STDERR_FILENO, clearLine + std::to_string(files_) + " files read");
}

}  // namespace halvane
