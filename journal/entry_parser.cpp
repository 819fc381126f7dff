#include "journal/entry_parser.h"

#include <charconv>
#include <cstdint>
#include <utility>

#include "system/files.h"
#include "text/text.h"
#include "text/utf8.h"

namespace halvane {
namespace {

using Value = std::optional<std::string_view>;

constexpr std::string_view delimiter = "---";

// Takes the first line off `text`, without its line feed.
std::string_view takeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  if (end == std::string_view::npos) return std::exchange(text, {});
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end + 1);
  return line;
}

// A line of the front matter, taken apart at its first colon.
struct Line {
  std::string_view key;    // trimmed; empty where there is no colon
  std::string_view value;  // not trimmed
};

Line takeApart(std::string_view line) {
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos) return {};
  return {trimWhitespacesButNewlines(line.substr(0, colon)), line.substr(colon + 1)};
}

Value trimmed(Value value) {
  if (value) value = trimWhitespacesButNewlines(*value);
  return value;
}

// What is read of every entry: its front matter, and the values of two keys. Of a key that occurs twice the
// last value counts.
struct FrontMatter {
  std::string_view lines;
  Value date, tags;
};

// Whether the key of `line` can be `key`. Most lines begin with the letters of another key, which no trimming
// takes off, and are not looked at any further.
bool mayBeOf(std::string_view key, std::string_view line) {
  if (line.empty()) return false;
  const char first = line.front();
  if (first < 'a' || first > 'z') return true;
  return first == key.front() && line.starts_with(key);
}

// Takes the front matter off `rest`, and the line that closes it. Nothing when it has no end.
std::optional<FrontMatter> takeFrontMatter(std::string_view& rest) {
  FrontMatter matter{rest, {}, {}};
  while (!rest.empty()) {
    const std::string_view text = takeLine(rest);
    if (text == delimiter) {
      matter.lines = {matter.lines.begin(), text.begin()};
      return matter;
    }
    if (!mayBeOf("date", text) && !mayBeOf("tags", text)) continue;
    const Line line = takeApart(text);
    if (line.key == "date") matter.date = line.value;
    if (line.key == "tags") matter.tags = line.value;
  }
  return std::nullopt;
}

// Whether `text` has a line with the delimiter and a carriage return, as on Windows.
bool hasWindowsDelimiter(std::string_view text) {
  while (!text.empty()) {
    if (takeLine(text) == "---\r") return true;
  }
  return false;
}

// A decimal integer with an optional sign; 0 for anything else, and for a number that doesn't fit into 64
// bits.
std::int64_t parseInteger(std::string_view text) {
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return 0;
  }
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size() ? number : 0;
}

std::optional<std::string> copyOf(const Value& text) {
  return text ? std::optional<std::string>(*text) : std::nullopt;
}

}  // namespace

std::optional<EntryHead> EntryHead::read(std::string_view firstBytes) {
  std::string_view rest = withoutByteOrderMark(firstBytes);
  if (takeLine(rest) != delimiter) return std::nullopt;
  const std::optional<FrontMatter> matter = takeFrontMatter(rest);
  // The line that closes the front matter may be cut, too.
  if (!matter || firstBytes.ends_with(delimiter)) return std::nullopt;
  const Value date = trimmed(matter->date);
  const std::optional<Instant> moment = date ? parseInternetDateTime(*date) : std::nullopt;
  return moment ? std::optional<EntryHead>({*moment, trimmed(matter->tags)}) : std::nullopt;
}

EntryReading EntryText::read(std::string_view file) {
  if (!isUtf8(file)) return Refusal::notUtf8;
  std::string_view rest = withoutByteOrderMark(file);
  const std::string_view opening = takeLine(rest);
  if (opening != delimiter) {
    return hasWindowsDelimiter(opening) ? Refusal::carriageReturns : Refusal::noFrontMatter;
  }
  const std::string_view afterOpening = rest;
  const std::optional<FrontMatter> matter = takeFrontMatter(rest);
  if (!matter) {
    return hasWindowsDelimiter(afterOpening) ? Refusal::carriageReturns : Refusal::noClosingLine;
  }
  const Value date = trimmed(matter->date);
  if (!date) return Refusal::noDate;
  const std::optional<Instant> moment = parseInternetDateTime(*date);
  if (!moment) return date->ends_with('\r') ? Refusal::carriageReturns : Refusal::badDate;
  return EntryText{{*moment, trimmed(matter->tags)}, matter->lines, trimWhitespacesAndNewlines(rest)};
}

Value EntryText::value(std::string_view key) const {
  Value last;
  for (std::string_view rest = frontMatter; !rest.empty();) {
    const std::string_view text = takeLine(rest);
    if (!mayBeOf(key, text)) continue;
    const Line line = takeApart(text);
    if (line.key == key) last = line.value;
  }
  return trimmed(last);
}

bool EntryHead::hasTag(std::string_view tag) const {
  return tags && isUtf8(*tags) && Entry::isAmongTags(tag, *tags);
}

Entry EntryText::entry(const FileUrl& fileURL) const {
  Entry entry;
  entry.id = fileURL.text();
  entry.url = fileURL;
  entry.date = date;
  entry.durationSeconds = parseInteger(value("duration_seconds").value_or(""));
  entry.cleaned = value("cleaned") == "true";
  if (const Value edited = value("edited")) entry.editedAt = parseInternetDateTime(*edited);
  entry.cleanupModel = copyOf(value("cleanup_model"));
  entry.language = copyOf(value("language"));
  if (tags) entry.tags = Entry::parseTags(*tags);
  entry.body = body;
  return entry;
}

std::optional<Entry> Entry::parse(const FileUrl& fileURL) {
  ByteBuffer buffer;
  const std::optional<std::string_view> file = readFile(fileURL.path, {entryOpenings}, buffer);
  if (!file) return std::nullopt;
  const EntryReading text = EntryText::read(*file);
  return text ? std::optional<Entry>(text->entry(fileURL)) : std::nullopt;
}

}  // namespace halvane
