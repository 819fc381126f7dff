#include <csignal>

#include "sandbox/sandbox.h"
#include "server/message_loop.h"

namespace {

// A reply that can't be written is only lost: neither a client that goes away nor an output file that may not
// grow takes the loop with it. The second signal is held back and not ignored, so that only one is.
void outliveFailedWrites() {
  std::signal(SIGPIPE, SIG_IGN);
  sigset_t fileSizeLimit;
  sigemptyset(&fileSizeLimit);
  sigaddset(&fileSizeLimit, SIGXFSZ);
  sigprocmask(SIG_BLOCK, &fileSizeLimit, nullptr);
}

}  // namespace

// The program-wide values, serverVersion, dateStyle and toolDefinitions, are constants and there before this
// runs.
int main() {
  halvane::sandbox::enterReadOnly();
  outliveFailedWrites();
  halvane::serveMessages();
  return 0;
}
