#include "journal/journal_store.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "journal/entry_parser.h"
#include "journal/journal_location.h"
#include "walk/file_walk.h"

namespace halvane {
namespace {

// Whether the file at `left` comes before the one at `right` where their dates are equal.
bool comesFirst(std::string_view left, std::string_view right) {
  const auto differ = std::mismatch(left.begin(), left.end(), right.begin(), right.end()).first;
  const std::size_t shared = std::string_view(left.begin(), differ).rfind('/') + 1;
  left.remove_prefix(shared);
  right.remove_prefix(shared);
  const std::size_t leftSlash = left.find('/');
  const std::size_t rightSlash = right.find('/');
  const bool isFile = leftSlash == std::string_view::npos;
  if (isFile != (rightSlash == std::string_view::npos)) return isFile;
  return left.substr(0, leftSlash) < right.substr(0, rightSlash);
}

// The contents of the files that may become entries. To make an Entry takes longer than to search a file, and
// newer files may replace it later, so the entries are made at the end. There are at most about twice as
// many files as are wanted.
class NewestFiles {
 public:
  explicit NewestFiles(std::size_t maxEntries) : maxEntries_(maxEntries) {}

  // Whether the files have been cut to the wanted number. Then some dates are too old.
  bool areEnough() const { return oldest_.has_value(); }

  // Whether a file with this date may still be among the newest.
  bool mayTake(Instant date) const { return !oldest_ || date >= *oldest_; }

  // Takes a file with the entry's `date`.
  void take(Instant date, std::string_view path, std::string_view content) {
    if (!mayTake(date)) return;
    files_.push_back({date, std::string(path), std::string(content)});
    if (files_.size() / 2 > maxEntries_) sortAndCut();
  }

  std::vector<Entry> entries() {
    sortAndCut();
    std::vector<Entry> entries;
    entries.reserve(files_.size());
    for (File& file : files_) {
      const std::string content = std::move(file.content);
      if (const EntryReading text = EntryText::read(content)) entries.push_back(text->entry({file.path}));
    }
    return entries;
  }

 private:
  struct File {
    Instant date;
    std::string path;
    std::string content;
  };

  void sortAndCut() {
    std::sort(files_.begin(), files_.end(), [](const File& left, const File& right) {
      return left.date != right.date ? left.date > right.date : comesFirst(left.path, right.path);
    });
    if (files_.size() < maxEntries_ || files_.empty()) return;
    files_.erase(files_.begin() + static_cast<std::ptrdiff_t>(maxEntries_), files_.end());
    if (!files_.empty()) oldest_ = files_.back().date;
  }

  std::size_t maxEntries_;
  std::vector<File> files_;
  std::optional<Instant> oldest_;  // of those that were kept at the last cut
};

bool pass(const EntryTests& tests, const EntryText& entry) {
  return (!tests.head || tests.head(entry)) && (!tests.body || tests.body(entry.body));
}

}  // namespace

std::vector<Entry> loadEntries(const EntryTests& tests, std::size_t newest) {
  NewestFiles files(newest);
  const auto mayBeWanted = [&](std::string_view firstBytes) {
    if (!tests.head && !files.areEnough()) return true;
    const std::optional<EntryHead> head = EntryHead::read(firstBytes);
    return !head || (files.mayTake(head->date) && (!tests.head || tests.head(*head)));
  };
  const Beginning beginning{entryOpenings, mayBeWanted};
  readFilesBelow(journalRoot().path, ".md", beginning, [&](std::string_view path, std::string_view file) {
    if (tests.file && !tests.file(file)) return;
    const EntryReading text = EntryText::read(file);
    if (text && pass(tests, *text)) files.take(text->date, path, file);
  });
  return files.entries();
}

}  // namespace halvane
