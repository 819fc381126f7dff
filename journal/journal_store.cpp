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

// The contents of the files that may become entries. To make an Entry takes longer than to search a file, and
// newer files replace most of them later, so the entries are made at the end. There are never more than twice
// as many as are wanted.
class NewestFiles {
 public:
  explicit NewestFiles(std::size_t maxEntries) : maxEntries_(maxEntries) {}

  // Takes a file with the entry's `date`. Of files with equal dates, those taken first stay.
  void take(Instant date, std::string_view path, std::string_view content) {
    if (oldest_ && date <= *oldest_) return;
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
    std::stable_sort(files_.begin(), files_.end(),
                     [](const File& left, const File& right) { return left.date > right.date; });
    if (files_.size() < maxEntries_ || files_.empty()) return;
    files_.erase(files_.begin() + static_cast<std::ptrdiff_t>(maxEntries_), files_.end());
    if (!files_.empty()) oldest_ = files_.back().date;
  }

  std::size_t maxEntries_;
  std::vector<File> files_;
  std::optional<Instant> oldest_;  // of those that are kept, once there are as many as are wanted
};

}  // namespace

std::vector<Entry> loadEntries() {
  return loadEntries([](const EntryText&) { return true; });
}

std::vector<Entry> loadEntries(const std::function<bool(const EntryText&)>& keep, std::size_t newest) {
  NewestFiles files(newest);
  readFilesBelow(journalRoot().path, ".md", entryOpenings, [&](std::string_view path, std::string_view file) {
    const EntryReading text = EntryText::read(file);
    if (text && keep(*text)) files.take(text->date, path, file);
  });
  return files.entries();
}

}  // namespace halvane
