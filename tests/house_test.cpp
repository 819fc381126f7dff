#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The folders are the floors of a house: a file includes only what stands in its own folder or on a lower
// floor.

namespace halvane {
namespace {

struct Floor {
  std::string_view folder;
  int height;
};

// The two programs stand side by side under the roof, and neither knows the other.
constexpr std::array<Floor, 5> floors = {
    {{"platform", 0}, {"journal", 1}, {"tools", 2}, {"server", 3}, {"doctor", 3}}};

std::optional<int> heightOf(std::string_view folder) {
  const auto found =
      std::find_if(floors.begin(), floors.end(), [&](const Floor& floor) { return floor.folder == folder; });
  return found == floors.end() ? std::nullopt : std::optional<int>(found->height);
}

// What an #include line names, without its quotes or brackets; nothing for any other line.
std::optional<std::string> includedBy(std::string_view line) {
  const auto skipBlanks = [&] { line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size())); };
  skipBlanks();
  if (!line.starts_with('#')) return std::nullopt;
  line.remove_prefix(1);
  skipBlanks();
  if (!line.starts_with("include")) return std::nullopt;
  line.remove_prefix(7);
  skipBlanks();
  if (!line.starts_with('"') && !line.starts_with('<')) return std::nullopt;
  return std::string(line.substr(1, line.find_first_of("\">", 1) - 1));
}

// Whether a file in `folder` may hold `line`.
bool isAllowed(std::string_view folder, std::string_view line) {
  const std::optional<std::string> included = includedBy(line);
  if (!included) return true;
  if (included->starts_with("..")) return false;
  const std::string_view from = std::string_view(*included).substr(0, included->find('/'));
  const std::optional<int> height = heightOf(from);
  return !height || from == folder || *height < heightOf(folder);
}

std::vector<std::filesystem::path> sourcesIn(std::string_view folder) {
  std::vector<std::filesystem::path> sources;
  for (const auto& item :
       std::filesystem::recursive_directory_iterator(HALVANE_SOURCE_FOLDER "/" + std::string(folder))) {
    const std::filesystem::path extension = item.path().extension();
    if (extension == ".h" || extension == ".cpp") sources.push_back(item.path());
  }
  return sources;
}

std::vector<std::string> linesOf(const std::filesystem::path& path) {
  std::vector<std::string> lines;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) lines.push_back(line);
  return lines;
}

TEST(House, NoFileIncludesWhatStandsOnAHigherFloor) {
  for (const auto& [folder, height] : floors) {
    const std::vector<std::filesystem::path> sources = sourcesIn(folder);
    EXPECT_FALSE(sources.empty()) << folder;
    for (const std::filesystem::path& source : sources) {
      for (const std::string& line : linesOf(source))
        EXPECT_TRUE(isAllowed(folder, line)) << source << ": " << line;
    }
  }
}

TEST(House, TheJournalKnowsNothingOfJson) {
  for (const std::filesystem::path& source : sourcesIn("journal")) {
    for (const std::string& line : linesOf(source)) {
      EXPECT_NE(includedBy(line).value_or("").find("json"), 0U) << source << ": " << line;
      EXPECT_NE(includedBy(line), "platform/json.h") << source;
    }
  }
}

TEST(House, AnUpwardIncludeWouldBeRefused) {
  struct Case {
    std::string_view folder, line;
  };
  for (const Case& upward :
       {Case{"platform", "#include \"journal/entry.h\""}, Case{"platform", "#include \"server/replies.h\""},
        Case{"journal", "#include \"tools/read_entry.h\""},
        Case{"tools", "#include \"server/tool_dispatch.h\""}, Case{"tools", "#include \"doctor/report.h\""},
        Case{"server", "#include \"doctor/report.h\""}, Case{"doctor", "#include \"server/replies.h\""},
        Case{"tools", "  #  include <server/tool_dispatch.h>"},
        Case{"journal", "#include\t\"tools/date_style.h\"  // only this once"},
        Case{"journal", "#include \"../tools/date_style.h\""}}) {
    EXPECT_FALSE(isAllowed(upward.folder, upward.line)) << upward.folder << ": " << upward.line;
  }
}

TEST(House, AnIncludeOfTheSameFloorOrALowerOneOrALibraryIsAllowed) {
  struct Case {
    std::string_view folder, line;
  };
  for (const Case& allowed :
       {Case{"platform", "#include \"platform/text.h\""}, Case{"server", "#include \"platform/json.h\""},
        Case{"tools", "#include \"journal/entry.h\""}, Case{"platform", "#include <unicode/locid.h>"},
        Case{"doctor", "#include \"tools/date_style.h\""}, Case{"platform", "#include <vector>"},
        Case{"platform", "// a journal/entry.h would be above us"}}) {
    EXPECT_TRUE(isAllowed(allowed.folder, allowed.line)) << allowed.folder << ": " << allowed.line;
  }
}

}  // namespace
}  // namespace halvane
