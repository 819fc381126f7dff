#include "journal/entry_parser.h"

#include <algorithm>
#include <charconv>

#include "journal/entry.h"
#include "platform/files.h"
#include "platform/text.h"
#include "platform/utf8.h"

namespace halvane {
namespace {

constexpr std::string_view delimiter = "---";

// The values of the keys that count, as they stand in the file; of a key that occurs twice the last one.
struct FrontMatter {
  using Value = std::optional<std::string_view>;
  Value date, durationSeconds, cleaned, edited, cleanupModel, language, tags;

  Value* find(std::string_view key) {
    if (key == "date") return &date;
    if (key == "duration_seconds") return &durationSeconds;
    if (key == "cleaned") return &cleaned;
    if (key == "edited") return &edited;
    if (key == "cleanup_model") return &cleanupModel;
    if (key == "language") return &language;
    if (key == "tags") return &tags;
    return nullptr;
  }
};

// Takes the first line off `text`, without its line feed.
std::string_view takeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  return line;
}

// Takes the front matter off `text`, with both its delimiters; nothing when there is none.
std::optional<FrontMatter> takeFrontMatter(std::string_view& text) {
  if (takeLine(text) != delimiter) return std::nullopt;
  FrontMatter frontMatter;
  while (!text.empty()) {
    const std::string_view line = takeLine(text);
    if (line == delimiter) return frontMatter;
    const std::size_t colon = line.find(':');
    if (colon == std::string_view::npos) continue;
    FrontMatter::Value* value = frontMatter.find(trimWhitespaces(line.substr(0, colon)));
    if (value != nullptr) *value = trimWhitespaces(line.substr(colon + 1));
  }
  return std::nullopt;
}

// A decimal integer with an optional sign; 0 for whatever is none or doesn't fit 64 bits.
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

std::optional<Entry> Entry::parse(const FileUrl& fileURL) {
  ByteBuffer buffer;
  const std::optional<std::string_view> file = readFile(fileURL.path, entryOpenings, buffer);
  return file ? parse(fileURL, *file) : std::nullopt;
}

std::optional<Entry> Entry::parse(const FileUrl& fileURL, std::string_view file) {
  if (!isUtf8(file)) return std::nullopt;
  std::string_view text = withoutByteOrderMark(file);
  const std::optional<FrontMatter> frontMatter = takeFrontMatter(text);
  if (!frontMatter || !frontMatter->date) return std::nullopt;
  const std::optional<Instant> date = parseInternetDateTime(*frontMatter->date);
  if (!date) return std::nullopt;

  Entry entry;
  entry.id = fileURL.text();
  entry.url = fileURL;
  entry.date = *date;
  entry.durationSeconds = parseInteger(frontMatter->durationSeconds.value_or(""));
  entry.cleaned = frontMatter->cleaned == "true";
  if (frontMatter->edited) entry.editedAt = parseInternetDateTime(*frontMatter->edited);
  entry.cleanupModel = copyOf(frontMatter->cleanupModel);
  entry.language = copyOf(frontMatter->language);
  if (frontMatter->tags) entry.tags = parseTags(*frontMatter->tags);
  entry.body = trimWhitespacesAndNewlines(text);
  return entry;
}

}  // namespace halvane
