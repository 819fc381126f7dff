#include "tests/support/scoped_variable.h"

#include <cstdlib>
#include <utility>

namespace halvane {
namespace {

void set(const std::string& name, const std::optional<std::string>& value) {
  if (value) {
    setenv(name.c_str(), value->c_str(), 1);
  } else {
    unsetenv(name.c_str());
  }
}

}  // namespace

ScopedVariable::ScopedVariable(std::string name, const std::optional<std::string>& value)
    : name_(std::move(name)) {
  if (const char* before = std::getenv(name_.c_str())) before_ = before;
  set(name_, value);
}

ScopedVariable::~ScopedVariable() {
  set(name_, before_);
}

}  // namespace halvane
