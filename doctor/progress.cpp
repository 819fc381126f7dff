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
  if (isSeen_ && (folders_ >= many || files_ >= many)) writeWhole(STDERR_FILENO, clearLine);
}

void Progress::countFolder() {
  if (++folders_ % many == 0) show();
}

void Progress::countFile() {
  if (++files_ % many == 0) show();
}

void Progress::show() const {
  if (!isSeen_) return;
  writeWhole(STDERR_FILENO, clearLine + ("Folders: " + std::to_string(folders_)) +
                                ", files read: " + std::to_string(files_) + ", Ctrl-C stops");
}

}  // namespace halvane
