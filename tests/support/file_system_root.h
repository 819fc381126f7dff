#pragma once

#include <string>

namespace halvane {

/// Makes the folder `path` the root of this process's file system, so that its /etc is what is written there.
/// False when the system doesn't let us. For use in a child process.
bool takeAsRoot(const std::string& path);

}  // namespace halvane
