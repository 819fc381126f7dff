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

}  // namespace halvane
