#include "tests/support/file_names.h"

#include <fstream>

#include "tests/support/temporary_folder.h"

namespace halvane {
namespace {

bool makesFile(const std::string& path) {
  return std::ofstream(path).is_open();
}

}  // namespace

bool takesName(std::string_view name) {
  const TemporaryFolder folder;
  return makesFile(folder.below(name));
}

bool takesNamesThatAreNoText() {
  return takesName("\xFF");
}

bool tellsSpellingsApart() {
  const TemporaryFolder folder;
  return makesFile(folder.below("\u00E9")) && !std::ifstream(folder.below("e\u0301")).is_open();
}

}  // namespace halvane
