#pragma once

#include <netinet/in.h>
#include <sys/types.h>

#include <climits>
#include <span>
#include <string>

// What an attacker might do who has taken over a process.

namespace halvane {

/// What the acts are done to.
struct Scene {
  std::string folder;  // with `file` and an empty `subfolder` in it, and nothing called `fresh`
  std::string file, fresh, subfolder;
  const char* path;            // of the file
  int reading;                 // the file, open for reading
  int terminal;                // what this process takes its orders from
  pid_t other;                 // another process of the same user
  std::string procOfOther;     // its folder below /proc
  in_port_t port;              // TCP, where somebody listens
  std::string abstractSocket;  // the name, with the NUL before it, of a Unix socket where somebody listens
};

/// Does it: a negative result where errno says why it didn't.
using Deed = long (*)(const Scene&);

/// In place of a version of Landlock
inline constexpr long never = LONG_MAX;

struct Act {
  const char* name;
  bool filter;    // whether the filter alone refuses it
  long landlock;  // the version from which on Landlock alone refuses it
  Deed deed;
};

/// One for each refusal in the page on security. On Linux 6.18, root can do each of them.
std::span<const Act> allActs();

}  // namespace halvane
