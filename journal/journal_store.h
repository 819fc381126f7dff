#pragma once

// The journal's entries, read from the disk at each question.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "journal/entry.h"
#include "journal/entry_parser.h"

namespace halvane {

/// All entries of the journal, newest first, read afresh: every file below journalRoot() whose extension is
/// "md", without hidden ones and those that are no entries. Entries with equal dates come in the order of the
/// walk: a folder's files before its sub-folders, each by the bytes of their names. Empty when there is no
/// journal or it can't be read.
std::vector<Entry> loadEntries();

/// Of these the ones that pass the test `keep`, and of those the first `newest`. Every entry is tested, and
/// no more of them are held in memory than can still be among the result.
std::vector<Entry> loadEntries(const std::function<bool(const EntryText&)>& keep,
                               std::size_t newest = SIZE_MAX);

}  // namespace halvane
