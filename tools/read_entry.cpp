#include "tools/read_entry.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "journal/entry.h"
#include "journal/journal_location.h"
#include "system/paths.h"
#include "text/text.h"
#include "text/utf8.h"
#include "tools/date_style.h"

namespace halvane {
namespace {

// The position of the slash after as many components of `candidate` as the journal path has; nothing when
// there is none.
std::optional<std::size_t> restOf(std::string_view candidate, std::string_view journal) {
  std::size_t slash = 0;
  for (auto components = std::count(journal.begin(), journal.end(), '/'); components > 0; --components) {
    slash = candidate.find('/', slash + 1);
    if (slash == std::string_view::npos) return std::nullopt;
  }
  return slash;
}

// The file that the client may read under `path`: the journal's own path with what follows the journal in
// `path`, both standardised as text. An equivalent spelling of the journal folder is the journal, and leads
// nowhere else. Nothing when the path lies outside.
std::optional<FileUrl> confined(std::string_view path) {
  const std::string journal = standardisePath(journalRoot().path);
  const std::string candidate = standardisePath(makeAbsolute(expandTilde(path)));
  const std::optional<std::size_t> rest = restOf(candidate, journal);
  if (!rest || !canonicallyEqual(repairUtf8(candidate.substr(0, *rest)), repairUtf8(journal)))
    return std::nullopt;
  return FileUrl{journal + candidate.substr(*rest)};
}

std::string render(const Entry& entry) {
  std::string text = "Date: " + dateStyle.words().of(entry.date);
  text.append("\nDuration: ").append(std::to_string(entry.durationSeconds)).append("s");
  text.append("\nCleaned: ").append(entry.cleaned ? "true" : "false");
  std::string_view separator = "\nTags: ";
  for (const std::string& tag : entry.tags) text.append(std::exchange(separator, ", ")).append(tag);
  return text.append("\n\n").append(entry.body);
}

}  // namespace

std::string readEntry(std::string_view path) {
  const std::optional<FileUrl> file = confined(path);
  if (!file) return "Refused: path is outside the journal.";
  // No file name contains a NUL, not even that of a folder that a later ".." removes.
  const bool mayBeNamed = path.find('\0') == std::string_view::npos;
  const std::optional<Entry> entry = mayBeNamed ? Entry::parse(*file) : std::nullopt;
  if (!entry) return std::string("No entry found at ").append(path).append(".");
  return render(*entry);
}

}  // namespace halvane
