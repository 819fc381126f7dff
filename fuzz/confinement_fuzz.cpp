#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/opened_paths.h"
#include "fuzz/property.h"
#include "tests/support/current_folder.h"
#include "tests/support/entry_file.h"
#include "tests/support/property_list.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "text/text.h"
#include "text/utf8.h"
#include "tools/read_entry.h"

// That read_entry opens nothing but the settings, the journal and what lies, as text, below it. The input is
// a digit for one of several homes, and the path; in it $HOME and $JOURNAL stand for the folders of that
// home.

namespace halvane {
namespace {

constexpr std::string_view ours = "Of the journal.";
constexpr std::string_view theirs = "Of nobody's journal.";

// Where nobody's home is, and yet it is asked.
constexpr std::array<std::string_view, 5> systemSettings = {
    "/etc/passwd", "/etc/locale.conf", "/etc/default/locale", "/etc/localtime", "/etc/timezone"};
constexpr std::string_view zones = "/usr/share/zoneinfo/";

/// A home with a journal, and entries around it that nobody may read.
struct Home {
  TemporaryFolder folder;
  std::string journal;
  std::string current;  // the current folder

  // `name` is the journal's folder below the home, `setting` what the settings call it; the current folder is
  // the one called `currentName`.
  Home(std::string_view name, std::string_view setting, std::string_view currentName)
      : journal(folder.below(name)), current(folder.below(currentName)) {
    if (!setting.empty()) {
      writeFile(folder.below(".config/" + std::string(primarySuite) + ".plist"),
                propertyListOfText("journalRoot", setting));
    }
    writeJournal();
    for (const char* bait :
         {"bait.md", "x.md", "Documents/bait.md", "Documents/Halvane.md", "Documents/Halvane Old/bait.md",
          "Documents/halvane/x.md", "Tagebu\u0308cher/x.md"})
      writeFile(folder.below(bait), EntryFile{.body = std::string(theirs)}.text());
  }

  // A link in it leads out and is followed; what stands beside the link's target is bait all the same.
  void writeJournal() const {
    const std::string entry = EntryFile{.body = std::string(ours)}.text();
    writeFile(journal + "/x.md", entry);
    writeFile(journal + "/2025/y.md", entry);
    writeFile(journal + "/\u0301.md", entry);
    writeFile(folder.below("elsewhere/linked/z.md"), entry);
    writeFile(folder.below("elsewhere/bait.md"), EntryFile{.body = std::string(theirs)}.text());
    makeLink(journal + "/link", folder.below("elsewhere/linked"));
  }

  // Whether `path` is the journal's or below it. The folder itself is opened on the way to what has a longer
  // path than the system takes at once.
  bool isInJournal(const std::string& path) const {
    return path == journal || path.starts_with(journal + "/");
  }

  bool mayOpen(const std::string& path) const {
    if (isInJournal(path) || path.starts_with(zones)) return true;
    for (const std::string_view suite : {primarySuite, legacySuite}) {
      if (path == folder.below(".config/" + std::string(suite) + ".plist")) return true;
    }
    return std::find(systemSettings.begin(), systemSettings.end(), path) != systemSettings.end();
  }
};

const std::array<Home, 5>& homes() {
  static const std::array<Home, 5> all = {
      {{"Documents/Halvane", "", "Documents/Halvane"},
       {"Journal", "~/Journal/", ""},
       {"Tageb\u00FCcher", "~/Documents/..//./Tageb\u00FCcher", "Documents"},
       {"Journal", "~/Journal/2025/..", "elsewhere"},
       {"Journal", "2025/..", "Journal"}}};
  return all;
}

struct Reading {
  std::string reply;
  std::vector<std::string> opened;
};

Reading readIn(const Home& home, std::string_view path) {
  const ScopedVariable variable("HOME", home.folder.path());
  const CurrentFolder folder(home.current);
  Reading reading;
  reading.opened = pathsOpenedBy([&] { reading.reply = readEntry(path); });
  return reading;
}

bool isOfJournal(const std::string& reply) {
  return reply.starts_with("Date: ") && reply.ends_with("\n\n" + std::string(ours));
}

// Otherwise nothing that is said below would say anything.
bool isReadable(const Home& home, const std::string& name) {
  const Reading reading = readIn(home, home.journal + name);
  return isOfJournal(reading.reply) &&
         std::count(reading.opened.begin(), reading.opened.end(), home.journal + name) == 1;
}

bool everyJournalIsReadable() {
  return std::all_of(homes().begin(), homes().end(), [](const Home& home) {
    return isReadable(home, "/x.md") && isReadable(home, "/link/z.md");
  });
}

void replaceAll(std::string& text, std::string_view what, std::string_view with) {
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + with.size()))
    text.replace(at, what.size(), with);
}

std::vector<std::string> componentsOf(const std::filesystem::path& path) {
  std::vector<std::string> components;
  for (const std::filesystem::path& component : path.lexically_normal()) {
    if (!component.empty()) components.push_back(component);
  }
  return components;
}

// Folder by folder, with equivalent spellings being the same folder.
bool liesBelow(const std::string& folder, const std::string& path) {
  const std::vector<std::string> outer = componentsOf(folder);
  const std::vector<std::string> inner = componentsOf(path);
  return inner.size() > outer.size() &&
         std::equal(outer.begin(), outer.end(), inner.begin(), canonicallyEqual);
}

// What ".." takes back is gone, with the NULs in it.
bool holdsNul(const std::string& path) {
  return std::filesystem::path(path).lexically_normal().native().find('\0') != std::string::npos;
}

std::string absolute(const Home& home, const std::string& path) {
  if (path == "~" || path.starts_with("~/")) return home.folder.path() + path.substr(1);
  return path.starts_with('/') ? path : home.current + "/" + path;
}

void checkOpened(const Home& home, const std::vector<std::string>& opened, bool refused) {
  for (const std::string& path : opened) {
    mustHold(home.mayOpen(path), ("nothing is opened outside the journal, not " + path).c_str());
    if (!home.isInJournal(path)) continue;
    mustHold(!refused, "nothing is opened for a refused path");
    mustHold(std::filesystem::path(path).lexically_normal() == path,
             "a path without .. is opened, so that no link can lead it elsewhere");
  }
}

void check(const Home& home, const std::string& path) {
  const auto [reply, opened] = readIn(home, path);
  const bool refused = reply == "Refused: path is outside the journal.";
  checkOpened(home, opened, refused);
  mustHold(refused || reply == "No entry found at " + path + "." || isOfJournal(reply),
           "only an entry of the journal is shown");
  mustHold(!isOfJournal(reply) || !holdsNul(absolute(home, path)), "a path with a NUL names no file");
  const bool ofAnotherUser = path.starts_with('~') && path != "~" && !path.starts_with("~/");
  mustHold(ofAnotherUser || refused != liesBelow(home.journal, absolute(home, path)),
           "what lies outside is refused, and nothing else");
}

}  // namespace
}  // namespace halvane

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  for (const char* variable : {"XDG_CONFIG_HOME", "LC_ALL", "LC_TIME", "LANG", "TZ"}) unsetenv(variable);
  halvane::mustHold(halvane::everyJournalIsReadable(), "the entries of every journal are shown");
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halvane;
  if (size == 0) return 0;
  const Home& home = homes()[(std::size_t{data[0]} - '0') % homes().size()];
  std::string path = repairUtf8({reinterpret_cast<const char*>(data) + 1, size - 1});
  replaceAll(path, "$HOME", home.folder.path());
  replaceAll(path, "$JOURNAL", home.journal);
  check(home, path);
  return 0;
}
