#include "fuzz/odd_home.h"

#include <sys/stat.h>

#include <algorithm>
#include <boost/json.hpp>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <system_error>
#include <utility>

#include "journal/journal_location.h"
#include "text/utf8.h"

namespace halvane {
namespace {

namespace json = boost::json;

constexpr char recordSeparator = '\x1E', unitSeparator = '\x1F';
constexpr std::size_t mostText = std::size_t{1} << 16;
constexpr std::size_t mostMessages = 4;
constexpr std::size_t largestCrowd = 256;
constexpr std::size_t longestPath = 1024;

// What may be a path below a folder: without a way out of it, and without NULs.
std::string withoutWayOut(std::string_view name) {
  name = name.substr(0, longestPath);
  std::string path;
  for (std::size_t begin = 0; begin < name.size();) {
    const std::size_t end = std::min(name.find('/', begin), name.size());
    std::string component(name.substr(begin, end - begin));
    std::erase(component, '\0');
    if (!component.empty() && component != "." && component != "..") path.append("/").append(component);
    begin = end + 1;
  }
  return path.empty() ? path : path.substr(1);
}

std::string repeated(std::string_view text, std::size_t times) {
  std::string all;
  for (; times > 0; --times) all += text;
  return all;
}

// Whether a piece of that kind can be made at `path`: nothing is there, or a file that grows.
bool hasRoom(char kind, const std::filesystem::path& path) {
  std::error_code ignored;
  const std::filesystem::file_status there = std::filesystem::symlink_status(path, ignored);
  return !std::filesystem::exists(there) || (kind == 'F' && std::filesystem::is_regular_file(there));
}

std::string callOf(std::string_view tool, const json::object& arguments) {
  return json::serialize(json::object{{"jsonrpc", "2.0"},
                                      {"id", 1},
                                      {"method", "tools/call"},
                                      {"params", {{"name", tool}, {"arguments", arguments}}}});
}

}  // namespace

struct OddHome::Piece {
  char kind;
  std::size_t times;
  std::string_view name;
  std::string_view once;  // the text, as it stands in the input
  std::string text;       // as often as it is wanted
};

OddHome::OddHome(std::string_view input) : current_(home_.path()) {
  std::size_t room = mostText;
  while (!input.empty()) {
    const std::string_view bytes = input.substr(0, input.find(recordSeparator));
    input.remove_prefix(std::min(bytes.size() + 1, input.size()));
    if (bytes.size() < 2) continue;
    Piece piece{bytes[0], 1, {}, bytes.substr(2), {}};
    if (bytes[1] >= '0' && bytes[1] <= '9') piece.times = std::size_t{1} << (2 * (bytes[1] - '0'));
    if (const std::size_t end = piece.once.find(unitSeparator); end != std::string_view::npos) {
      piece.name = piece.once.substr(0, end);
      piece.once.remove_prefix(end + 1);
    }
    piece.times = std::min(piece.times, room / std::max<std::size_t>(piece.once.size(), 1));
    piece.text = repeated(piece.once, piece.times);
    room -= piece.text.size();
    take(piece);
  }
}

bool OddHome::holdsJournal() const {
  std::error_code error;
  const std::filesystem::path root = std::filesystem::weakly_canonical(journalRoot().path, error);
  return !error && (root.native() + "/").starts_with(home_.path() + "/");
}

std::size_t OddHome::size() const {
  constexpr std::size_t ofAnItem = 64;
  std::size_t size = sizeOfVariables_;
  std::error_code error;
  for (const auto& item : std::filesystem::recursive_directory_iterator(home_.path(), error)) {
    const std::uintmax_t content = item.file_size(error);
    size += ofAnItem + item.path().filename().native().size() + (error ? 0 : content);
  }
  return size;
}

void OddHome::take(const Piece& piece) {
  switch (piece.kind) {
    case 'A':
      return takeVariable("LC_ALL", piece.text);
    case 'Z':
      return takeVariable("TZ", piece.text);
    case 'Y':
      return takeVariable("TZ", home_.below(withoutWayOut(piece.text)));
    case 'X':
      return takeVariable("XDG_CONFIG_HOME", home_.below(withoutWayOut(piece.text)));
    case 'R':
      return home_.setJournalRoot(primarySuite, "~/" + withoutWayOut(repairUtf8(piece.text)));
    case 'S':
      return takeSettings(primarySuite, piece.text);
    case 'O':
      return takeSettings(legacySuite, piece.text);
    case 'C':
      return takeCrowd(piece);
    case 'F':
    case 'D':
    case 'L':
    case 'P':
      return takeFileOrFolder(piece);
    default:
      return ask(piece);
  }
}

// What can't be made, because something else has the name, is left out.
void OddHome::takeFileOrFolder(const Piece& piece) {
  const bool isNamed = piece.kind == 'F' || piece.kind == 'L';
  const std::string name = withoutWayOut(isNamed ? piece.name : piece.text);
  const std::filesystem::path path = home_.journal() + "/" + name;
  std::error_code error;
  std::filesystem::create_directories(piece.kind == 'D' ? path : path.parent_path(), error);
  if (error || name.empty() || !hasRoom(piece.kind, path)) return;
  if (piece.kind == 'F') std::ofstream(path, std::ios::binary | std::ios::app) << piece.text;
  if (piece.kind == 'L') std::filesystem::create_symlink(home_.below(withoutWayOut(piece.text)), path, error);
  if (piece.kind == 'P') mkfifo(path.c_str(), 0600);
}

void OddHome::takeCrowd(const Piece& piece) {
  for (std::size_t count = std::min(piece.times, largestCrowd); count > 0; --count) {
    const std::string name = std::string(piece.name) + std::to_string(count) + ".md";
    takeFileOrFolder({'F', 1, name, {}, std::string(piece.once)});
  }
}

void OddHome::takeVariable(const char* name, std::string value) {
  std::erase(value, '\0');
  sizeOfVariables_ += value.size();
  variables_.emplace_front(name, value);
}

void OddHome::takeSettings(std::string_view suite, const std::string& content) {
  const std::filesystem::path path = home_.settings(suite);
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << content;
}

void OddHome::ask(const Piece& piece) {
  if (messages_.size() == mostMessages) return;
  const std::string text = repairUtf8(piece.text);
  std::string line;
  if (piece.kind == 'Q') line = callOf("search_entries", {{"query", text}, {"limit", 100}});
  if (piece.kind == 'T') line = callOf("search_entries", {{"query", ""}, {"tag", text}, {"limit", 100}});
  if (piece.kind == 'N') line = callOf("list_recent", {{"days", 365}});
  if (piece.kind == 'E') line = callOf("read_entry", {{"path", home_.journal() + "/" + text}});
  const bool wantsReply = !line.empty();
  if (piece.kind == 'M') line = piece.text;
  std::erase(line, '\n');
  if (!line.empty()) messages_.push_back({line + "\n", wantsReply});
}

}  // namespace halvane
