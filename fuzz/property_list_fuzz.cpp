#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/property.h"
#include "journal/journal_location.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"

// The companion application's settings, written by anybody. The input is the file that holds them.

namespace halvane {
namespace {

const TemporaryHome& home() {
  static const TemporaryHome user;
  return user;
}

std::optional<std::string> setting() {
  const std::optional<Preferences> settings = appDefaults(std::string(primarySuite));
  return settings ? settings->string("journalRoot") : std::nullopt;
}

void check() {
  const FileUrl root = journalRoot();
  mustHold(root.path.starts_with('/'), "the journal's path is absolute");
  mustHold(journalRoot() == root, "the same settings name the same folder");
  const std::optional<std::string> text = setting();
  mustHold(text || root.path == home().journal(), "without a setting the journal is in the documents folder");
  mustHold(!text || !text->starts_with('/') || root.path == *text, "an absolute path is taken as it stands");
}

}  // namespace
}  // namespace halvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halvane;
  static const std::string settings = home().below(".config/" + std::string(primarySuite) + ".plist");
  writeFile(settings, {reinterpret_cast<const char*>(data), size});
  check();
  return 0;
}
