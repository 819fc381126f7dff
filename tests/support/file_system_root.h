#pragma once

#include <string>

namespace halvane {

/// Makes the folder `path` the root of this process's file system. Its /etc is then the one in that folder.
/// False when the system doesn't let us. For use in a child process.
bool takeAsRoot(const std::string& path);

}  // namespace halvane
