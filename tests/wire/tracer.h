#pragma once

#include <string>
#include <vector>

namespace halvane {

/// Whether strace(1) is there.
bool hasTracer();

/// For Surroundings::before: becomes a tracer of the server with `options`, which writes what it sees into
/// the file `trace`. The server's environment is `variables`, each "NAME=value", and PATH.
void becomeTracer(const std::string& trace, std::vector<std::string> options,
                  std::vector<std::string> variables);

}  // namespace halvane
