#pragma once

#include <functional>
#include <string>

namespace halvane {

/// Runs `work` in a child process, a copy of this one, and returns its result. Limits, the user and signal
/// handlers that `work` changes end with that process. Throws when that process dies before it returns a
/// result.
std::string inChildProcess(const std::function<std::string()>& work);

/// If root runs this process, makes it an ordinary user's for good: then it can't read files without
/// permission either. For use in a child process.
void becomeOrdinaryUser();

}  // namespace halvane
