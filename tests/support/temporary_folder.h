#pragma once

#include <string>
#include <string_view>

namespace halvane {

/// A new, empty folder, removed with everything in it when this ends.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// Absolute, without links in it and without a slash at the end.
  const std::string& path() const { return path_; }
  /// `name` below it.
  std::string below(std::string_view name) const;

 private:
  std::string path_;
};

}  // namespace halvane
