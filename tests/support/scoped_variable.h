#pragma once

#include <optional>
#include <string>

namespace halvane {

/// An environment variable with another value, or with none, until this ends.
class ScopedVariable {
 public:
  ScopedVariable(std::string name, const std::optional<std::string>& value);
  ~ScopedVariable();
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;

 private:
  std::string name_;
  std::optional<std::string> before_;
};

}  // namespace halvane
