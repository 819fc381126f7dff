#pragma once

namespace halvane::sandbox {

/// Has the kernel refuse, for good, what no filter of system calls can see: reading the memory, environment
/// or open files of processes outside, be it by opening a file below /proc. From Landlock's fourth version on
/// that costs reading nothing. False where there is no Landlock or none of it is to be had. `no_new_privs`
/// must be set.
bool giveUpOtherProcesses();

/// Has the kernel refuse, for good, to write, create, remove, rename, cut short and execute files, as far as
/// this version of Landlock knows them. Every opening pays for it. False as above.
bool giveUpChangingFiles();

}  // namespace halvane::sandbox
