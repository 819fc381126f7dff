#include "sandbox/landlock_linux.h"

#include <linux/landlock.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>

namespace halvane::sandbox {
namespace {

// Rights that a ruleset handles and grants to no folder are gone everywhere. The kernel headers of the oldest
// system that we build on lack some of these rights.
struct Ruleset {
  std::uint64_t files;
  std::uint64_t network;
  std::uint64_t scopes;
};
constexpr std::uint64_t truncateFile = 1ULL << 14;
constexpr std::uint64_t controlDevices = 1ULL << 15;
constexpr std::uint64_t bindOrConnectTcp = 1ULL << 0 | 1ULL << 1;
constexpr std::uint64_t reachOutsideSocketsAndProcesses = 1ULL << 0 | 1ULL << 1;

// Each version of the interface knows more rights, and refuses a ruleset with others. We leave out the rights
// to read files and folders, so these stay. Any ruleset that handles files also refuses to move them into
// another folder (LANDLOCK_ACCESS_FS_REFER).
Ruleset allThatVersionKnows(long version) {
  Ruleset ruleset{LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
                      LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR |
                      LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG |
                      LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO |
                      LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_SYM,
                  0, 0};
  if (version >= 3) ruleset.files |= truncateFile;
  if (version >= 4) ruleset.network = bindOrConnectTcp;
  if (version >= 5) ruleset.files |= controlDevices;
  if (version >= 6) ruleset.scopes = reachOutsideSocketsAndProcesses;
  return ruleset;
}

std::size_t sizeInVersion(long version) {
  if (version >= 6) return sizeof(Ruleset);
  return version >= 4 ? offsetof(Ruleset, scopes) : offsetof(Ruleset, network);
}

long knownVersion() {
  return syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
}

bool enter(const Ruleset& ruleset, long version) {
  const long descriptor = syscall(SYS_landlock_create_ruleset, &ruleset, sizeInVersion(version), 0);
  if (descriptor < 0) return false;
  const bool isEntered = syscall(SYS_landlock_restrict_self, descriptor, 0) == 0;
  close(static_cast<int>(descriptor));
  return isEntered;
}

}  // namespace

// A process that has given up any right can no longer look into a process that has not. If the version knows
// rights that don't concern files, we give up these: with a right over files, every opening takes longer.
bool giveUpOtherProcesses() {
  const long version = knownVersion();
  if (version < 1) return false;
  Ruleset ruleset = allThatVersionKnows(version);
  ruleset.files = version >= 4 ? 0 : LANDLOCK_ACCESS_FS_EXECUTE;
  return enter(ruleset, version);
}

bool giveUpChangingFiles() {
  const long version = knownVersion();
  return version >= 1 && enter(allThatVersionKnows(version), version);
}

}  // namespace halvane::sandbox
