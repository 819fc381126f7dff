#pragma once

namespace halvane::sandbox {

/// Has the kernel refuse this process, for good, every system call but those in `allowedCalls`, which answer
/// EPERM, and calls by the rules of another processor or of x32 too. It never kills. False where the kernel
/// takes no filter, and on a processor that the list has not been looked through for. `no_new_privs` must be
/// set.
bool refuseAllButAllowedCalls();

}  // namespace halvane::sandbox
