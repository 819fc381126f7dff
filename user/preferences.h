#pragma once

// The user's settings for an application.

#include <memory>
#include <optional>
#include <string>

namespace halvane {

/// The identifier of the bundle that this process runs under; nothing outside a bundle, as always on Linux.
std::optional<std::string> mainBundleIdentifier();

/// The settings that one application keeps for the user, as they were at the time of opening.
class Preferences {
 public:
  /// This process's own; nothing on Linux.
  static std::optional<Preferences> standard();

  /// Those of the application with the bundle identifier `suite`. On Linux, nothing when there are none that
  /// can be read; on macOS, settings without texts. On Linux they are the property list, XML or binary,
  /// `<suite>.plist` in $XDG_CONFIG_HOME where that is absolute, otherwise in ~/.config: a regular file of at
  /// most 16 MiB.
  static std::optional<Preferences> ofSuite(const std::string& suite);

  /// The path of the file that holds the settings of `suite`, whether it is there or not; nothing on macOS,
  /// where the system reads them.
  static std::optional<std::string> fileOfSuite(const std::string& suite);

  /// The text stored under `key`, as it is stored; nothing when there is none or the value is of another
  /// kind.
  std::optional<std::string> string(const std::string& key) const;

 private:
  struct Store;
  explicit Preferences(std::shared_ptr<const Store> store) : store_(std::move(store)) {}
  std::shared_ptr<const Store> store_;
};

}  // namespace halvane
