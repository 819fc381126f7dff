#pragma once

// The journal's entries, read from the disk at each question.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <vector>

#include "journal/entry.h"
#include "journal/entry_parser.h"

namespace halvane {

/// All entries of the journal, newest first, read at each call: every file below journalRoot() whose
/// extension is "md", without hidden files and files that are not entries. Entries with equal dates come in
/// the order of the walk: a folder's files before its sub-folders, each by the bytes of their names. Empty
/// when there is no journal or it can't be read.
std::vector<Entry> loadEntries();

/// The first `newest` of these entries that pass the test `keep`. Tests every entry, and keeps in memory only
/// those that can still be among the result.
std::vector<Entry> loadEntries(const std::function<bool(const EntryText&)>& keep,
                               std::size_t newest = SIZE_MAX);

}  // namespace halvane
