#pragma once

// How an entry file's bytes become the parts of an entry, or the reason why they are none.

#include <array>
#include <optional>
#include <string_view>

#include "journal/entry.h"

namespace halvane {

/// What an entry file begins with: the line that opens its front matter, perhaps after a byte-order mark.
/// Whatever begins otherwise is no entry and need not be read on.
inline constexpr std::array<std::string_view, 2> entryOpenings = {"---\n", "\xEF\xBB\xBF---\n"};

/// What stands in the way of a file's being an entry.
enum class Refusal {
  notUtf8,          ///< some of its bytes are no UTF-8 text
  carriageReturns,  ///< the lines of its front matter end as those of Windows do
  noFrontMatter,    ///< its first line is not "---"
  noClosingLine,    ///< no later line is "---"
  noDate,           ///< its front matter has no date
  badDate           ///< it has one in another form than an internet date-time, or of a day that never was
};

class EntryReading;

/// An entry as it stands in its file. The views are of the file's bytes and valid as long as these: most
/// entries are only looked at and passed over, and for that nothing has to be copied.
struct EntryText {
  using Value = std::optional<std::string_view>;

  Instant date;
  /// The values of the other keys, trimmed but not yet read; nothing where a key is missing.
  Value durationSeconds, cleaned, edited, cleanupModel, language, tags;
  std::string_view body;

  /// Reads an entry file's raw bytes: the text, or the first thing that stands in the way of its being an
  /// entry.
  static EntryReading read(std::string_view file);

  /// Whether one of the entry's tags is `tag`, a canonical one.
  bool hasTag(std::string_view tag) const;

  /// The entry itself, which owns what it holds, from the file at `fileURL`.
  Entry entry(const FileUrl& fileURL) const;
};

/// An entry's text or the reason why there is none, to be used as the std::expected of later C++: the text is
/// there to be had where the reading is true, otherwise the reason.
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
