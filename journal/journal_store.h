#pragma once

// The journal's entries, read from the disk at each question.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "journal/entry.h"
#include "journal/entry_parser.h"

namespace halvane {

/// Which entries are wanted: those that pass every test that is there. Most files fail one early, and then
/// their rest isn't read or looked at.
struct EntryTests {
  /// Whether an entry with this head is wanted.
  std::function<bool(const EntryHead&)> head = nullptr;
  /// False for a whole file (raw bytes) if no text within it can pass as a body.
  std::function<bool(std::string_view)> file = nullptr;
  /// Whether an entry with this body (UTF-8) is wanted.
  std::function<bool(std::string_view)> body = nullptr;
};

/// The journal's entries that are wanted, newest first and at most `newest` of them, read at each call from
/// every file below journalRoot() whose extension is "md", without hidden files and files that are not
/// entries. Where dates are equal, a folder's files come before those of its sub-folders, each by the bytes
/// of their names. Empty when there is no journal or it can't be read. Keeps in memory at most
/// about twice as many files as `newest`.
std::vector<Entry> loadEntries(const EntryTests& tests = {}, std::size_t newest = SIZE_MAX);

}  // namespace halvane
