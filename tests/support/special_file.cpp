#include "tests/support/special_file.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>

namespace halvane {

void makeNamedPipe(const std::string& path) {
  if (mkfifo(path.c_str(), 0600) != 0) throw std::runtime_error("no pipe at " + path);
}

void makeSocket(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) throw std::runtime_error("too long for a socket: " + path);
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
  const bool made = bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  close(descriptor);
  if (!made) throw std::runtime_error("no socket at " + path);
}

}  // namespace halvane
