#include <pwd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <functional>
#include <vector>

#include "system/accounts.h"

namespace halvane {
namespace {

// getpwuid_r(3) or getpwnam_r(3) for a certain user.
using LookUp = std::function<int(passwd*, char*, std::size_t, passwd**)>;

// On macOS, accounts are not in /etc/passwd but in the system's directory. The C library asks a system
// service for them, without a socket in this process.
std::optional<std::string> homeFrom(const LookUp& lookUp) {
  passwd account;
  passwd* found = nullptr;
  std::vector<char> texts(4096);
  int error;
  while ((error = lookUp(&account, texts.data(), texts.size(), &found)) == ERANGE || error == EINTR) {
    if (error == ERANGE) texts.resize(2 * texts.size());
  }
  if (found == nullptr || found->pw_dir[0] != '/') return std::nullopt;
  return found->pw_dir;
}

}  // namespace

std::string homeDirectory() {
  if (const char* home = std::getenv("HOME"); home != nullptr && home[0] == '/') return home;
  const uid_t user = getuid();
  return homeFrom([user](auto... result) { return getpwuid_r(user, result...); }).value_or("/");
}

std::optional<std::string> homeDirectoryOf(std::string_view name) {
  if (name.find('\0') != std::string_view::npos) return std::nullopt;
  const std::string user(name);
  return homeFrom([&user](auto... result) { return getpwnam_r(user.c_str(), result...); });
}

}  // namespace halvane
