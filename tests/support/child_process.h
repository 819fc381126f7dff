#pragma once

#include <functional>
#include <string>

namespace halvane {

/// What `work` returns when it runs in a process of its own, a copy of this one: what it changes there
/// (limits, the user, signal handlers) ends with it. Throws when that process doesn't live to return it.
std::string inChildProcess(const std::function<std::string()>& work);

/// Makes this process, when it is root's, an ordinary user's for good: files without permissions are then as
/// closed to it as to anybody. For use in a child process.
void becomeOrdinaryUser();

}  // namespace halvane
