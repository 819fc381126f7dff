#include "fuzz/opened_paths.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <utility>

namespace halvane {
namespace {

std::vector<std::string>* opened = nullptr;  // null while nobody watches
std::map<int, std::string> pathsOfDescriptors;

std::string absolute(int folder, const char* path) {
  if (*path == '/') return path;
  if (folder == AT_FDCWD) return std::filesystem::current_path().string() + "/" + path;
  return pathsOfDescriptors[folder] + "/" + path;
}

int openNoted(int folder, const char* path, int flags, mode_t mode) {
  const auto descriptor = static_cast<int>(syscall(SYS_openat, folder, path, flags, mode));
  if (opened == nullptr) return descriptor;
  opened->push_back(absolute(folder, path));
  if (descriptor >= 0) pathsOfDescriptors[descriptor] = opened->back();
  return descriptor;
}

FILE* openStreamNoted(const char* path, const char* mode) {
  using Open = FILE* (*)(const char*, const char*);
  static const auto next = reinterpret_cast<Open>(dlsym(RTLD_NEXT, "fopen"));
  if (opened != nullptr) opened->push_back(absolute(AT_FDCWD, path));
  return next(path, mode);
}

// The last argument of open(2), which is there only when the file may have to be made.
mode_t modeIn(int flags, std::va_list arguments) {
  return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

}  // namespace

std::vector<std::string> pathsOpenedBy(const std::function<void()>& work) {
  std::vector<std::string> paths;
  opened = &paths;
  work();
  opened = nullptr;
  pathsOfDescriptors.clear();
  return paths;
}

}  // namespace halvane

extern "C" {

int openat(int folder, const char* path, int flags, ...) {
  std::va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = halvane::modeIn(flags, arguments);
  va_end(arguments);
  return halvane::openNoted(folder, path, flags, mode);
}

int open(const char* path, int flags, ...) {
  std::va_list arguments;
  va_start(arguments, flags);
  const mode_t mode = halvane::modeIn(flags, arguments);
  va_end(arguments);
  return halvane::openNoted(AT_FDCWD, path, flags, mode);
}

int openat64(int folder, const char* path, int flags, ...) __attribute__((alias("openat")));
int open64(const char* path, int flags, ...) __attribute__((alias("open")));

FILE* fopen(const char* path, const char* mode) {
  return halvane::openStreamNoted(path, mode);
}

FILE* fopen64(const char* path, const char* mode) {
  return halvane::openStreamNoted(path, mode);
}

}  // extern "C"
