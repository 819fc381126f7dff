#include <csignal>

#include "sandbox/sandbox.h"
#include "server/message_loop.h"

namespace {

// If a reply can't be written, only that reply is lost: neither a client that goes away nor an output file
// that may not grow ends the loop. SIGXFSZ is blocked, which is enough to survive it.
void outliveFailedWrites() {
  std::signal(SIGPIPE, SIG_IGN);
  sigset_t fileSizeLimit;
  sigemptyset(&fileSizeLimit);
  sigaddset(&fileSizeLimit, SIGXFSZ);
  sigprocmask(SIG_BLOCK, &fileSizeLimit, nullptr);
}

}  // namespace

// The program-wide values serverVersion, dateStyle and toolDefinitions are constants, made before `main`
// runs.
int main() {
  halvane::sandbox::enterReadOnly();
  outliveFailedWrites();
  halvane::serveMessages();
  return 0;
}
