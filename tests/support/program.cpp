#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>

#include "tests/support/program.h"

namespace halvane {
namespace {

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

}  // namespace

Program::Program(const std::string& path)
    : path_(path), descriptor_(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {
  if (descriptor_ < 0) throw std::runtime_error("can't open " + path);
}

Program::~Program() {
  close(descriptor_);
}

void Program::become(std::vector<std::string> arguments, std::vector<std::string> variables) const {
  execute(pointersTo(arguments).data(), pointersTo(variables).data());
}

}  // namespace halvane
