#include <pwd.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>

#include "system/accounts.h"

namespace halvane {
namespace {

// The C library's look-up would ask the name service, which may open sockets.
std::optional<std::string> homeOfFirst(const std::function<bool(const passwd&)>& matches) {
  const std::unique_ptr<FILE, int (*)(FILE*)> accounts(std::fopen("/etc/passwd", "re"), &std::fclose);
  if (!accounts) return std::nullopt;
  while (const passwd* account = fgetpwent(accounts.get())) {
    if (matches(*account) && account->pw_dir[0] == '/') return account->pw_dir;
  }
  return std::nullopt;
}

}  // namespace

std::string homeDirectory() {
  if (const char* home = std::getenv("HOME"); home != nullptr && home[0] == '/') return home;
  const uid_t user = getuid();
  return homeOfFirst([user](const passwd& account) { return account.pw_uid == user; }).value_or("/");
}

std::optional<std::string> homeDirectoryOf(std::string_view name) {
  return homeOfFirst([name](const passwd& account) { return account.pw_name == name; });
}

}  // namespace halvane
