#pragma once

// What an entry is: its fields, its tags, its place.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "user/dates.h"

namespace halvane {

/// Where a file or folder is: its absolute path, raw bytes, neither standardised nor resolved.
struct FileUrl {
  std::string path;

  /// The path as text to show: UTF-8, with U+FFFD in place of bytes that are not.
  std::string text() const;
  bool operator==(const FileUrl&) const = default;
};

/// One journal entry, read from one Markdown file. `parse` makes it, and nothing changes it afterwards. All
/// texts are UTF-8, and the entry owns them.
struct Entry {
  std::string id;                           ///< the path of its file, as text
  FileUrl url;                              ///< the file it was read from, as it was named to the parser
  Instant date;                             ///< when it was made
  std::int64_t durationSeconds = 0;         ///< as the file says, 0 when it doesn't
  bool cleaned = false;                     ///< whether its text was cleaned up
  std::optional<Instant> editedAt;          ///< when it was last edited
  std::optional<std::string> cleanupModel;  ///< what did the clean-up; may be present and empty
  std::optional<std::string> language;      ///< may be present and empty
  std::vector<std::string> tags;            ///< canonical, in the file's order, none twice
  std::string body;                         ///< the Markdown text, without white space at its ends

  /// The body's first line without white space at its ends, however long; empty when the body is. A line ends
  /// at a line feed without a carriage return before it.
  std::string_view firstLine() const;

  /// Reads the entry file at `fileURL`. Nothing when there is no such file, when it can't be read whole, or
  /// when it is not an entry. Throws only std::bad_alloc.
  static std::optional<Entry> parse(const FileUrl& fileURL);

  /// The canonical form of the tag `text` (UTF-8): lower case, composed (Normalization Form C), without "#",
  /// words joined by "-", only letters, 0 to 9 and "-", 1 to 30 user-perceived characters. Nothing when no
  /// such character is left, or more than 30.
  static std::optional<std::string> normalizeTag(std::string_view text);

  /// The canonical forms of `texts` in their order, none twice, without those that have none.
  static std::vector<std::string> normalizeTags(const std::vector<std::string_view>& texts);

  /// The canonical tags in the value of a tags line: pieces between commas and line feeds, the whole perhaps
  /// in square brackets.
  static std::vector<std::string> parseTags(std::string_view value);

  /// Whether parseTags(value) would contain the canonical tag `tag`, found without making the list.
  static bool isAmongTags(std::string_view tag, std::string_view value);

  /// Equal in all ten fields. Texts are equal when they are canonically equivalent.
  friend bool operator==(const Entry& left, const Entry& right);
};

/// The entry's tags, each after a "#" and with one blank before that; empty without tags.
std::string tagSuffix(const Entry& entry);

}  // namespace halvane

/// Equal entries have equal hashes.
template <>
struct std::hash<halvane::Entry> {
  std::size_t operator()(const halvane::Entry& entry) const;
};
