#include "tests/wire/own_system.h"

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "tests/support/child_process.h"
#include "tests/support/written_file.h"

namespace halvane {

OwnSystem::OwnSystem() {
  chmod(etc_.path().c_str(), 0755);
  // The loader finds the libraries by it.
  std::error_code ignored;
  std::filesystem::copy("/etc/ld.so.cache", etc("ld.so.cache"), ignored);
}

bool OwnSystem::isAllowed() {
  try {
    const OwnSystem system;
    return inChildProcess([&] { return system.enter()(), std::string("allowed"); }) == "allowed";
  } catch (const std::exception&) {
    return false;
  }
}

void OwnSystem::setZone(const std::string& name) const {
  std::filesystem::remove(etc("localtime"));
  makeLink(etc("localtime"), "/usr/share/zoneinfo/" + name);
}

std::function<void()> OwnSystem::enter() const {
  return [etc = etc_.path()] {
    enterOwnMounts();
    if (mount(etc.c_str(), "/etc", nullptr, MS_BIND, nullptr) != 0)
      throw std::runtime_error("can't mount on /etc");
  };
}

void enterOwnMounts() {
  const uid_t user = geteuid();
  const gid_t group = getegid();
  if (unshare(user == 0 ? CLONE_NEWNS : CLONE_NEWNS | CLONE_NEWUSER) != 0 ||
      mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) {
    throw std::runtime_error("the system allows no mounts of our own");
  }
  if (user == 0) return;
  // An ordinary user has the rights in a user namespace. The numbers stay the same there.
  std::ofstream("/proc/self/setgroups") << "deny";
  std::ofstream("/proc/self/uid_map") << user << ' ' << user << " 1\n";
  std::ofstream("/proc/self/gid_map") << group << ' ' << group << " 1\n";
}

}  // namespace halvane
