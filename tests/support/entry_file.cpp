#include "tests/support/entry_file.h"

namespace halvane {
namespace {

std::string line(const std::string& key, const std::optional<std::string>& value) {
  return value ? key + ": " + *value + "\n" : "";
}

}  // namespace

std::string EntryFile::text() const {
  return "---\n" + line("date", date) + line("duration_seconds", durationSeconds) + line("cleaned", cleaned) +
         line("edited", edited) + line("cleanup_model", cleanupModel) + line("language", language) +
         line("tags", tags) + "---\n" + body;
}

std::string entryWithBody(const std::string& body) {
  return EntryFile{.body = body}.text();
}

}  // namespace halvane
