#pragma once

#include <string>

namespace halvane {

/// Another current directory, until this ends.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::string& path);
  ~CurrentFolder();
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;

 private:
  int before_;
};

}  // namespace halvane
