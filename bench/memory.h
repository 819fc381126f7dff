#pragma once

#include <sys/types.h>

#include <string_view>

namespace halvane {

/// What the kernel says about the memory of the process `pid`, in megabytes (millions of bytes): `name` is a
/// line of /proc/PID/status such as VmHWM (the most at any time), VmRSS (all now) or RssAnon (its own now).
double memoryOf(pid_t pid, std::string_view name);

}  // namespace halvane
