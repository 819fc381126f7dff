#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <stdexcept>

#include "tests/doctor/doctor_process.h"
#include "tests/support/entry_file.h"
#include "tests/support/preload.h"
#include "tests/support/special_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

// A folder whose listing breaks off, as on a failing disk, or doesn't tell what its items are, as on some
// file systems.

namespace halvane {
namespace {

// From now on the kernel answers this process's listings as it does for a broken disk.
void breakListings() {
  std::array<sock_filter, 4> steps = {{BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                                       BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_getdents64, 0, 1),
                                       BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EIO),
                                       BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)}};
  const sock_fprog program = {static_cast<unsigned short>(steps.size()), steps.data()};
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
      prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
    throw std::runtime_error("no filter");
}

TEST(Listing, ThatBreaksOffIsNotTakenForAnEmptyFolder) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{}.text());
  const Answer given = callDoctor({.home = home.path(), .before = breakListings});
  EXPECT_TRUE(given.says("\n! The folder itself: it can't be read: Input/output error\n")) << given.output;
  EXPECT_EQ(given.status, 1);
}

TEST(Listing, WithoutKindsLeadsToTheSameReport) {
  const TemporaryHome home;
  home.write("2025/a.md", EntryFile{}.text());
  writeFile(home.below("elsewhere/b.md"), EntryFile{}.text());
  makeLink(home.journal() + "/link to a file.md", home.below("elsewhere/b.md"));
  makeLink(home.journal() + "/link to a folder", home.below("elsewhere"));
  makeLink(home.journal() + "/link to a folder.md", home.below("elsewhere"));
  makeLink(home.journal() + "/link to nothing.md", home.below("missing"));
  makeNamedPipe(home.journal() + "/pipe.md");
  const Answer given = callDoctor({.home = home.path()});
  EXPECT_TRUE(given.says("\n! link to nothing.md: it can't be read: No such file or directory\n"))
      << given.output;
  EXPECT_EQ(callDoctor({.home = home.path(), .variables = preloaded(HALVANE_UNKNOWN_KINDS)}).output,
            given.output);
}

}  // namespace
}  // namespace halvane
