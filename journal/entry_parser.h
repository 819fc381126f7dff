#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "journal/entry.h"

namespace halvane {

/// What an entry file begins with: the line that opens its front matter, perhaps behind a byte-order mark.
/// Whatever begins otherwise is no entry and need not be read on.
inline constexpr std::array<std::string_view, 2> entryOpenings = {"---\n", "\xEF\xBB\xBF---\n"};

/// An entry as it stands in its file. The views are of the file's bytes and valid as long as these: most
/// entries are only looked at and passed over, and for that nothing has to be copied.
struct EntryText {
  using Value = std::optional<std::string_view>;

  Instant date;
  /// The values of the other keys, trimmed but not yet read; nothing where a key is missing.
  Value durationSeconds, cleaned, edited, cleanupModel, language, tags;
  std::string_view body;

  /// Reads an entry file's raw bytes; nothing when they are no entry.
  static std::optional<EntryText> read(std::string_view file);

  /// Whether one of the entry's tags is `tag`, a canonical one.
  bool hasTag(std::string_view tag) const;

  /// The entry itself, which owns what it holds, from the file at `fileURL`.
  Entry entry(const FileUrl& fileURL) const;
};

/// What stands in the way of a file's being an entry.
enum class NoEntry {
  notUtf8,          ///< some of its bytes are no UTF-8 text
  carriageReturns,  ///< the lines of its front matter end as those of Windows do
  noFrontMatter,    ///< its first line is not "---"
  noClosingLine,    ///< no later line is "---"
  noDate,           ///< its front matter has no date
  otherDate         ///< it has one in another form than an internet date-time, or of a day that never was
};

/// For a person who looks for an entry in vain: what EntryText::read meets first that makes it refuse these
/// raw bytes. Nothing when they are an entry.
std::optional<NoEntry> whyNoEntry(std::string_view file);

}  // namespace halvane
