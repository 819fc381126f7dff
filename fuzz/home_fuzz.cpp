#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/odd_home.h"
#include "fuzz/property.h"
#include "fuzz/steps.h"
#include "server/message_loop.h"
#include "text/utf8.h"

// A whole home, then a conversation there. The input is laid out as fuzz/odd_home.h says. Whatever stands in
// the home, in the variables and in a message, the steps that its answer takes stay within a constant times
// the bytes of the home, the message and the answer; and each request is answered.

namespace halvane {
namespace {

constexpr std::size_t longestInput = 16384;

// Choosing where a search may begin costs most: a few hundred steps for each two letters side by side that
// differ from those before, of which a query may have thousands. The inputs that are kept take an eighth of
// this at most.
constexpr Cost allowed = {.atMost = 16'000'000, .aByte = 400};

// Makes `stream` a file in memory that holds `bytes`.
void becomeFile(int stream, std::string_view bytes) {
  const int file = memfd_create("stream", 0);
  mustHold(write(file, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
           "a file in memory can be written");
  mustHold(lseek(file, 0, SEEK_SET) == 0 && dup2(file, stream) == stream, "it can be a stream");
  close(file);
}

std::string output() {
  std::string bytes(static_cast<std::size_t>(lseek(STDOUT_FILENO, 0, SEEK_CUR)), '\0');
  mustHold(pread(STDOUT_FILENO, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()),
           "the output can be read");
  return bytes;
}

void check(const OddHome::Message& message, std::size_t sizeOfHome) {
  becomeFile(STDIN_FILENO, message.line);
  becomeFile(STDOUT_FILENO, "");
  const std::uint64_t before = stepsTaken();
  serveMessages();
  const std::uint64_t steps = stepsTaken() - before;
  const std::string reply = output();
  const auto lines = std::count(reply.begin(), reply.end(), '\n');
  mustHold(lines == 1 || (reply.empty() && !message.wantsReply), "each request is answered once");
  mustHold(isUtf8(reply) && (reply.empty() || reply.ends_with("}\n")), "the answer is whole");
  allowed.mustCover(steps, sizeOfHome + message.line.size() + reply.size());
}

}  // namespace
}  // namespace halvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halvane;
  if (size > longestInput) return 0;
  const OddHome home({reinterpret_cast<const char*>(data), size});
  if (!home.holdsJournal()) return 0;
  const std::size_t sizeOfHome = home.size();
  for (const OddHome::Message& message : home.messages()) check(message, sizeOfHome);
  return 0;
}
