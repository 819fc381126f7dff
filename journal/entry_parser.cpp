#include "journal/entry_parser.h"

#include <algorithm>
#include <charconv>
#include <cstdint>

#include "system/files.h"
#include "text/text.h"
#include "text/utf8.h"

namespace halvane {
namespace {

constexpr std::string_view delimiter = "---";

// Takes the first line off `text`, without its line feed.
std::string_view takeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return line;
}

struct Key {
  std::string_view name;
  EntryText::Value EntryText::*value;
};

constexpr std::array<Key, 6> keys = {{{"duration_seconds", &EntryText::durationSeconds},
                                      {"cleaned", &EntryText::cleaned},
                                      {"edited", &EntryText::edited},
                                      {"cleanup_model", &EntryText::cleanupModel},
                                      {"language", &EntryText::language},
                                      {"tags", &EntryText::tags}}};

// One line of the front matter. Of a key that occurs twice the last value counts.
void readLine(std::string_view line, EntryText& entry, EntryText::Value& date) {
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos) return;
  const std::string_view name = trimWhitespacesButNewlines(line.substr(0, colon));
  const std::string_view value = trimWhitespacesButNewlines(line.substr(colon + 1));
  if (name == "date") date = value;
  for (const Key& key : keys) {
    if (name == key.name) entry.*key.value = value;
  }
}

// Takes the front matter off `rest`, and the line that closes it. False when it has no end.
bool takeFrontMatter(std::string_view& rest, EntryText& entry, EntryText::Value& date) {
  while (!rest.empty()) {
    const std::string_view line = takeLine(rest);
    if (line == delimiter) return true;
    readLine(line, entry, date);
  }
  return false;
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

std::optional<std::string> copyOf(const std::optional<std::string_view>& text) {
  return text ? std::optional<std::string>(*text) : std::nullopt;
}

}  // namespace

EntryReading EntryText::read(std::string_view file) {
  if (!isUtf8(file)) return Refusal::notUtf8;
  std::string_view rest = withoutByteOrderMark(file);
  const std::string_view opening = takeLine(rest);
  if (opening != delimiter) {
    return hasWindowsDelimiter(opening) ? Refusal::carriageReturns : Refusal::noFrontMatter;
  }
  const std::string_view afterOpening = rest;
  EntryText entry;
  Value date;
  if (!takeFrontMatter(rest, entry, date)) {
    return hasWindowsDelimiter(afterOpening) ? Refusal::carriageReturns : Refusal::noClosingLine;
  }
  if (!date) return Refusal::noDate;
  const std::optional<Instant> moment = parseInternetDateTime(*date);
  if (!moment) return date->ends_with('\r') ? Refusal::carriageReturns : Refusal::badDate;
  entry.date = *moment;
  entry.body = trimWhitespacesAndNewlines(rest);
  return entry;
}

bool EntryText::hasTag(std::string_view tag) const {
  return tags && Entry::isAmongTags(tag, *tags);
}

Entry EntryText::entry(const FileUrl& fileURL) const {
  Entry entry;
  entry.id = fileURL.text();
  entry.url = fileURL;
  entry.date = date;
  entry.durationSeconds = parseInteger(durationSeconds.value_or(""));
  entry.cleaned = cleaned == "true";
  if (edited) entry.editedAt = parseInternetDateTime(*edited);
  entry.cleanupModel = copyOf(cleanupModel);
  entry.language = copyOf(language);
  if (tags) entry.tags = Entry::parseTags(*tags);
  entry.body = body;
  return entry;
}

std::optional<Entry> Entry::parse(const FileUrl& fileURL) {
  ByteBuffer buffer;
  const std::optional<std::string_view> file = readFile(fileURL.path, entryOpenings, buffer);
  if (!file) return std::nullopt;
  const EntryReading text = EntryText::read(*file);
  return text ? std::optional<Entry>(text->entry(fileURL)) : std::nullopt;
}

}  // namespace halvane
