#pragma once

#include <optional>
#include <string>

namespace halvane {

/// The content of an entry file, with a front-matter line for each field that is set.
struct EntryFile {
  std::string date = "2025-11-03T09:14:00Z";
  std::optional<std::string> durationSeconds = {};
  std::optional<std::string> cleaned = {};
  std::optional<std::string> edited = {};
  std::optional<std::string> cleanupModel = {};
  std::optional<std::string> language = {};
  std::optional<std::string> tags = {};
  std::string body = {};

  std::string text() const;
};

/// The content of an entry file of 2025-11-03 with nothing but the date and `body`.
std::string entryWithBody(const std::string& body);

}  // namespace halvane
