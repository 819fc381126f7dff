#include "tests/support/special_file.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstring>
#include <stdexcept>

#include "tests/support/current_folder.h"

namespace halvane {

void makeNamedPipe(const std::string& path) {
  if (mkfifo(path.c_str(), 0600) != 0) throw std::runtime_error("no pipe at " + path);
}

void makeSocket(const std::string& path) {
  // Its address has room for a name, and for few paths.
  const std::size_t nameBegin = path.rfind('/') + 1;
  const CurrentFolder folder(path.substr(0, nameBegin));
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string name = path.substr(nameBegin);
  if (name.size() >= sizeof address.sun_path) throw std::runtime_error("too long for a socket: " + path);
  std::memcpy(address.sun_path, name.c_str(), name.size() + 1);
  const int descriptor = socket(AF_UNIX, SOCK_STREAM, 0);
  const bool made = bind(descriptor, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
  close(descriptor);
  if (!made) throw std::runtime_error("no socket at " + path);
}

}  // namespace halvane
