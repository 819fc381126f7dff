#include <csignal>

#include "server/message_loop.h"

// The program-wide values, serverVersion, dateStyle and toolDefinitions, are constants and there before this
// runs. A client that goes away must not take the loop with it: a reply that can't be written is only lost.
int main() {
  std::signal(SIGPIPE, SIG_IGN);
  halvane::serveMessages();
  return 0;
}
