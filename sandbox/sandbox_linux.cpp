#include <sys/prctl.h>

#include "sandbox/call_filter_linux.h"
#include "sandbox/landlock_linux.h"
#include "sandbox/sandbox.h"

namespace halvane::sandbox {

// Each lock is chosen by what the kernel has done, not by what it says that it knows. Landlock comes first,
// because the filter refuses its calls too.
std::string_view enterReadOnly() {
  prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
  const bool keptFromOthers = giveUpOtherProcesses();
  if (refuseAllButAllowedCalls()) {
    if (keptFromOthers) return {};
    return "This Linux lets it have no Landlock: it can change, send and start nothing, but could read the "
           "memory of your other programs.";
  }
  if (giveUpChangingFiles())
    return "This Linux takes no filter of system calls from it: Landlock keeps it from writing files, but not "
           "from changing their modes and times, from the network or from starting programs.";
  return "This Linux lets it have neither Landlock nor a filter of system calls: nothing but its own code "
         "keeps it to reading.";
}

}  // namespace halvane::sandbox
