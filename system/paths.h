#pragma once

// Paths as text: put together, made absolute, brought into one form.

#include <optional>
#include <string>
#include <string_view>

namespace halvane {

// A path is raw bytes here. These functions change it only as text: they don't ask the file system, and they
// resolve no links. The one exception is the current directory, which a relative path needs.

/// `path` with a leading "~" or "~name" replaced by that user's home directory. If there is no such user, the
/// path stays as it is.
std::string expandTilde(std::string_view path);

/// `path` itself when it is absolute, otherwise below the current directory (POSIX getcwd); the empty path is
/// the current directory. If the current directory no longer exists, it counts as "/".
std::string makeAbsolute(std::string_view path);

/// `path`, which must be absolute, without "." and "..", repeated slashes made one and no slash at the end
/// but the root's. ".." removes the component before it, and nothing at the root.
std::string standardisePath(std::string_view path);

/// `name` below `folder`, with one slash between them.
std::string joinPath(std::string_view folder, std::string_view name);

}  // namespace halvane
