#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The folders are the rooms of a house: a file includes only what stands in its own room or in one that its
// room stands on.

namespace halvane {
namespace {

struct Room {
  std::string_view folder;
  std::vector<std::string_view> standsOn;
};

const std::vector<Room>& rooms() {
  static const std::vector<Room> all = {
      {"text", {}},
      {"search", {"text"}},
      {"system", {}},
      {"walk", {"system"}},
      {"sandbox", {}},
      {"user", {"text", "system"}},
      {"journal", {"walk", "user", "text", "system"}},
      {"tools", {"journal", "user", "search", "text", "system"}},
      // The two programs stand side by side under the roof, and neither knows the other.
      {"server", {"tools", "journal", "user", "search", "text", "system", "sandbox"}},
      {"doctor", {"tools", "journal", "walk", "user", "search", "text", "system", "sandbox"}},
  };
  return all;
}

const Room* roomCalled(std::string_view folder) {
  const auto found =
      std::find_if(rooms().begin(), rooms().end(), [&](const Room& room) { return room.folder == folder; });
  return found == rooms().end() ? nullptr : &*found;
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

// Whether a file in the room `folder` may hold `line`.
bool isAllowed(std::string_view folder, std::string_view line) {
  const std::optional<std::string> included = includedBy(line);
  if (!included) return true;
  if (included->starts_with("..")) return false;
  const std::string_view from = std::string_view(*included).substr(0, included->find('/'));
  if (from == folder || roomCalled(from) == nullptr) return true;
  const std::vector<std::string_view>& below = roomCalled(folder)->standsOn;
  return std::find(below.begin(), below.end(), from) != below.end();
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

TEST(House, NoFileIncludesWhatItsRoomDoesNotStandOn) {
  for (const auto& [folder, standsOn] : rooms()) {
    const std::vector<std::filesystem::path> sources = sourcesIn(folder);
    EXPECT_FALSE(sources.empty()) << folder;
    for (const std::filesystem::path& source : sources) {
      for (const std::string& line : linesOf(source))
        EXPECT_TRUE(isAllowed(folder, line)) << source << ": " << line;
    }
  }
}

TEST(House, NoRoomIsMissingFromTheList) {
  for (const auto& item : std::filesystem::directory_iterator(HALVANE_SOURCE_FOLDER)) {
    const std::string folder = item.path().filename();
    const bool isRoom = item.is_directory() && folder != "tests" && folder != "fuzz" &&
                        std::filesystem::exists(item.path() / "CMakeLists.txt") && !sourcesIn(folder).empty();
    EXPECT_EQ(roomCalled(folder) != nullptr, isRoom) << folder;
  }
}

TEST(House, TheJournalKnowsNothingOfJson) {
  for (const std::filesystem::path& source : sourcesIn("journal")) {
    for (const std::string& line : linesOf(source)) {
      EXPECT_NE(includedBy(line).value_or("").find("json"), 0U) << source << ": " << line;
      EXPECT_NE(includedBy(line), "server/json.h") << source;
    }
  }
}

TEST(House, AnUpwardOrSidewaysIncludeWouldBeRefused) {
  struct Case {
    std::string_view folder, line;
  };
  for (const Case& upward : {Case{"text", "#include \"journal/entry.h\""},
                             Case{"user", "#include \"server/replies.h\""},
                             Case{"text", "#include \"system/files.h\""},
                             Case{"system", "#include \"text/text.h\""},
                             Case{"text", "#include \"search/folding.h\""},
                             Case{"search", "#include \"system/files.h\""},
                             Case{"search", "#include \"user/user_locale.h\""},
                             Case{"user", "#include \"search/text_search.h\""},
                             Case{"system", "#include \"walk/file_walk.h\""},
                             Case{"walk", "#include \"text/text.h\""},
                             Case{"tools", "#include \"walk/file_walk.h\""},
                             Case{"system", "#include \"user/dates.h\""},
                             Case{"journal", "#include \"server/json.h\""},
                             Case{"journal", "#include \"tools/read_entry.h\""},
                             Case{"journal", "#include \"search/text_search.h\""},
                             Case{"tools", "#include \"server/tool_dispatch.h\""},
                             Case{"tools", "#include \"doctor/report.h\""},
                             Case{"server", "#include \"doctor/report.h\""},
                             Case{"doctor", "#include \"server/replies.h\""},
                             Case{"tools", "  #  include <server/tool_dispatch.h>"},
                             Case{"journal", "#include\t\"tools/date_style.h\"  // only this once"},
                             Case{"journal", "#include \"../tools/date_style.h\""}}) {
    EXPECT_FALSE(isAllowed(upward.folder, upward.line)) << upward.folder << ": " << upward.line;
  }
}

TEST(House, AnIncludeOfTheSameRoomOrALowerOneOrALibraryIsAllowed) {
  struct Case {
    std::string_view folder, line;
  };
  for (const Case& allowed :
       {Case{"text", "#include \"text/text.h\""}, Case{"search", "#include \"text/text.h\""},
        Case{"user", "#include \"text/text.h\""}, Case{"user", "#include \"system/files.h\""},
        Case{"walk", "#include \"system/files.h\""}, Case{"server", "#include \"server/json.h\""},
        Case{"tools", "#include \"journal/entry.h\""}, Case{"text", "#include <unicode/locid.h>"},
        Case{"doctor", "#include \"tools/date_style.h\""}, Case{"text", "#include <vector>"},
        Case{"text", "// a journal/entry.h would be above us"}}) {
    EXPECT_TRUE(isAllowed(allowed.folder, allowed.line)) << allowed.folder << ": " << allowed.line;
  }
}

}  // namespace
}  // namespace halvane
