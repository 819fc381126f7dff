#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "tests/support/temporary_folder.h"

namespace halvane {

/// An /etc of our own that one server alone sees in place of the system's, by a mount namespace: what we
/// change in it changes for the server while it runs. It holds no settings at first.
class OwnSystem {
 public:
  OwnSystem();

  /// Whether this system lets us do that: it takes root, or user namespaces that ordinary users may have.
  static bool isAllowed();

  /// Where the server's file `/etc/<name>` really is.
  std::string etc(std::string_view name) const { return etc_.below(name); }
  /// Makes the server's /etc/localtime lead to the zone `name`, such as Europe/Berlin.
  void setZone(const std::string& name) const;

  /// For Surroundings::before.
  std::function<void()> enter() const;

 private:
  const TemporaryFolder etc_;
};

/// For Surroundings::before: gives the process its own mounts, and the rights to change them. Throws where
/// the system refuses that.
void enterOwnMounts();

}  // namespace halvane
