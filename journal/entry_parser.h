#pragma once

// Finds the parts of an entry in a file's bytes, or the reason why the file is not an entry.

#include <array>
#include <optional>
#include <string_view>

#include "journal/entry.h"

namespace halvane {

/// What an entry file begins with: the line that opens its front matter, perhaps after a byte-order mark. A
/// file that begins otherwise is not an entry, and its rest need not be read.
inline constexpr std::array<std::string_view, 2> entryOpenings = {"---\n", "\xEF\xBB\xBF---\n"};

/// Why a file is not an entry.
enum class Refusal {
  notUtf8,          ///< some of its bytes are not UTF-8
  carriageReturns,  ///< the lines of its front matter end in CR LF, as on Windows
  noFrontMatter,    ///< its first line is not "---"
  noClosingLine,    ///< no later line is "---"
  noDate,           ///< its front matter has no date
  badDate           ///< its date is not an internet date-time, or of a day that doesn't exist
};

/// What a tool may ask each entry for, as views of its file's bytes, valid as long as those bytes.
struct EntryHead {
  Instant date;
  std::optional<std::string_view> tags;  // the value of "tags": any bytes, if the file is not UTF-8

  /// Reads it from the first bytes of a file, raw and cut anywhere. Nothing when they don't hold the whole
  /// front matter of an entry. Whether the file is UTF-8, and so an entry, is not looked at.
  static std::optional<EntryHead> read(std::string_view firstBytes);

  /// Whether one of the entry's tags is the canonical tag `tag`.
  bool hasTag(std::string_view tag) const;
};

class EntryReading;

/// The parts of an entry as views of its file's bytes, valid as long as those bytes. Most entries are only
/// looked at and passed over, so nothing is copied.
struct EntryText : EntryHead {
  std::string_view frontMatter;  // the lines between its delimiters
  std::string_view body;

  /// Reads an entry file's raw bytes: gives the parts, or the first reason why the file is not an entry.
  static EntryReading read(std::string_view file);

  /// The value of `key` in the front matter, trimmed but not yet read: the last one where the key occurs more
  /// than once. Nothing where it doesn't occur.
  std::optional<std::string_view> value(std::string_view key) const;

  /// The entry itself, which owns its texts. It comes from the file at `fileURL`.
  Entry entry(const FileUrl& fileURL) const;
};

/// An entry's parts, or the reason why there are none. It works like the std::expected of later C++: when it
/// is true, it has the parts, otherwise the reason.
class EntryReading {
 public:
  EntryReading(const EntryText& text) : text_(text) {}
  EntryReading(Refusal refusal) : refusal_(refusal) {}

  explicit operator bool() const { return text_.has_value(); }
  const EntryText& operator*() const { return *text_; }
  const EntryText* operator->() const { return &*text_; }
  Refusal error() const { return refusal_; }

 private:
  std::optional<EntryText> text_;
  Refusal refusal_ = Refusal::notUtf8;
};

}  // namespace halvane
