#include "tests/wire/tracer.h"

#include <unistd.h>

#include <stdexcept>

namespace halvane {
namespace {

constexpr const char* tracer = "/usr/bin/strace";

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

bool hasTracer() {
  return access(tracer, X_OK) == 0;
}

void becomeTracer(const std::string& trace, std::vector<std::string> options,
                  std::vector<std::string> variables) {
  options.insert(options.begin(), "strace");
  options.insert(options.end(), {"-f", "-o", trace, HALVANE_MCP});
  variables.emplace_back("PATH=/usr/bin:/bin");
  execve(tracer, pointersTo(options).data(), pointersTo(variables).data());
  throw std::runtime_error("can't start the tracer");
}

}  // namespace halvane
