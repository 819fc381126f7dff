#pragma once

namespace halvane::sandbox {

/// Makes the kernel refuse, for good, every system call of this process except those in `allowedCalls`.
/// Refused calls, those of x32 and of another processor's calling convention among them, fail with EPERM, and
/// `hiddenCalls` with ENOSYS. The filter never kills the process. False when the kernel offers no filter, and
/// on a processor that the list was not made for. `no_new_privs` must be set.
bool refuseAllButAllowedCalls();

}  // namespace halvane::sandbox
