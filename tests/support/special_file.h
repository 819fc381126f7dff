#pragma once

#include <string>

namespace halvane {

/// Makes a pipe with a name at `path`, which nobody writes to.
void makeNamedPipe(const std::string& path);

/// Makes a socket with a name at `path`, which nobody listens on.
void makeSocket(const std::string& path);

}  // namespace halvane
