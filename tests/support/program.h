#pragma once

#include <string>
#include <vector>

namespace halvane {

/// A program that another process is to become. Linux opens it at once: the user that the process becomes
/// before may have no way to it.
class Program {
 public:
  /// Throws where there is none at `path`.
  explicit Program(const std::string& path);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  /// Makes this process that program, with `arguments`, its name first, and `variables`, each "NAME=value",
  /// for its environment. Returns only where the system refuses that.
  void become(std::vector<std::string> arguments, std::vector<std::string> variables) const;

 private:
  void execute(char** arguments, char** variables) const;

  std::string path_;
  int descriptor_;
};

}  // namespace halvane
