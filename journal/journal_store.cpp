#include "journal/journal_store.h"

#include <algorithm>
#include <utility>

#include "journal/entry_parser.h"
#include "journal/journal_location.h"
#include "platform/files.h"

namespace halvane {
namespace {

void sortNewestFirst(std::vector<Entry>& entries) {
  std::stable_sort(entries.begin(), entries.end(),
                   [](const Entry& left, const Entry& right) { return left.date > right.date; });
}

void cutTo(std::vector<Entry>& entries, std::size_t newest) {
  if (entries.size() > newest)
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(newest), entries.end());
}

}  // namespace

std::vector<Entry> loadEntries() {
  return loadEntries([](const EntryText&) { return true; });
}

std::vector<Entry> loadEntries(const std::function<bool(const EntryText&)>& keep, std::size_t newest) {
  std::vector<Entry> entries;
  readFilesBelow(journalRoot().path, ".md", entryOpenings, [&](std::string_view path, std::string_view file) {
    const std::optional<EntryText> text = EntryText::read(file);
    if (!text || !keep(*text)) return;
    entries.push_back(text->entry({std::string(path)}));
    if (entries.size() / 2 > newest) {
      sortNewestFirst(entries);
      cutTo(entries, newest);
    }
  });
  sortNewestFirst(entries);
  cutTo(entries, newest);
  return entries;
}

}  // namespace halvane
