#pragma once

// Where the home folders of the users are.

#include <optional>
#include <string>
#include <string_view>

namespace halvane {

/// The current user's home directory, an absolute path in raw bytes: HOME where it is set and absolute,
/// otherwise the account's; "/" when there is neither.
std::string homeDirectory();

/// The home directory of the user called `name` (raw bytes). On Linux, from /etc/passwd alone; on macOS, from
/// the system's own service for accounts. Opens no socket. Nothing when there is no such user or the
/// directory is not absolute.
std::optional<std::string> homeDirectoryOf(std::string_view name);

}  // namespace halvane
