#include <sys/time.h>

#include <csignal>

// A library for LD_PRELOAD: the process into which it is loaded is interrupted by a signal two thousand times
// a second, and system calls that can be interrupted are.

namespace {

void interrupt(int) {}

[[gnu::constructor]] void startInterrupting() {
  struct sigaction action {};
  action.sa_handler = interrupt;  // without SA_RESTART
  sigaction(SIGALRM, &action, nullptr);
  const itimerval often{{0, 500}, {0, 500}};
  setitimer(ITIMER_REAL, &often, nullptr);
}

}  // namespace
