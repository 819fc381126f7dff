#pragma once

namespace halvane::sandbox {

/// Makes the kernel refuse, for good, what no filter of system calls can see: reading the memory, environment
/// or open files of other processes, also through files below /proc. From Landlock's fourth version on, this
/// doesn't slow down reading. False when the kernel has no Landlock or doesn't let this process enter it.
/// `no_new_privs` must be set.
bool giveUpOtherProcesses();

/// Makes the kernel refuse, for good, to write, create, remove, rename, truncate and execute files, as far as
/// this version of Landlock can. Every opening takes longer from then on. False as above.
bool giveUpChangingFiles();

}  // namespace halvane::sandbox
