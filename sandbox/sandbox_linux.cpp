#include <sys/prctl.h>

#include "sandbox/call_filter_linux.h"
#include "sandbox/landlock_linux.h"
#include "sandbox/sandbox.h"

namespace halvane::sandbox {

// We go by what the kernel has accepted, not by what it claims to offer. Landlock comes first,
// because the filter refuses Landlock's calls.
std::string_view enterReadOnly() {
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  const bool keptFromOthers = giveUpOtherProcesses();
  if (refuseAllButAllowedCalls()) {
    if (keptFromOthers) return {};
    return "This Linux offers no Landlock: the server can't change files, use the network or start programs, "
           "but it could read the memory of your other programs.";
  }
  if (giveUpChangingFiles())
    return "This Linux offers no seccomp filter: Landlock keeps the server from writing files and starting "
           "programs, but not from changing the modes and times of files or from using the network.";
  return "This Linux offers neither Landlock nor a seccomp filter: only the server's own code keeps it from "
         "doing more than read.";
}

}  // namespace halvane::sandbox
