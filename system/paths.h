#pragma once

// Paths as text: put together, made absolute, brought into one form.

#include <optional>
#include <string>
#include <string_view>

namespace halvane {

// A path here is raw bytes and is changed as text only: no file system is asked and no link resolved. The one
// exception is the current directory, which a relative path needs.

/// `path` with a leading "~" or "~name" replaced by that user's home directory. A name that nobody has leaves
/// the path as it is.
std::string expandTilde(std::string_view path);

/// `path` itself when it is absolute, otherwise below the current directory (POSIX getcwd); the empty path is
/// the current directory. Where there is no current directory any more, as below "/".
std::string makeAbsolute(std::string_view path);

/// An absolute path without "." and "..", repeated slashes made one and no slash at the end but the root's.
/// ".." takes back the component before it, and nothing at the root.
std::string standardisePath(std::string_view path);

/// `name` below `folder`, with one slash between them.
std::string joinPath(std::string_view folder, std::string_view name);

}  // namespace halvane
