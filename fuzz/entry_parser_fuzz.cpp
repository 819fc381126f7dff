#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/canonical_tag.h"
#include "fuzz/property.h"
#include "journal/entry.h"
#include "journal/entry_parser.h"
#include "tests/support/entry_file.h"
#include "text/text.h"
#include "text/utf8.h"

// The parser of entry files and the entry that it makes. The input is the file.

namespace halvane {
namespace {

constexpr std::string_view keys[] = {"duration_seconds", "cleaned",  "edited",
                                     "cleanup_model",    "language", "tags"};

std::optional<std::string> copyOf(const std::optional<std::string_view>& value) {
  return value ? std::optional<std::string>(*value) : std::nullopt;
}

void checkValues(const EntryText& text, std::string_view file) {
  mustHold(isUtf8(file), "only a file in UTF-8 is an entry");
  mustHold(isUtf8(text.body), "the body is cut between characters");
  mustHold(trimWhitespacesAndNewlines(text.body) == text.body, "the body has no white space at its ends");
  for (const std::string_view key : keys) {
    const std::string_view value = text.value(key).value_or("");
    mustHold(isUtf8(value), "a value is cut between characters");
    mustHold(value.find('\n') == std::string_view::npos, "a value is on one line");
    mustHold(trimWhitespacesButNewlines(value) == value, "a value has no blanks at its ends");
  }
}

// What was read, written as a file and read again, is the same.
void checkReadAgain(const EntryText& text) {
  EntryFile file;
  file.durationSeconds = copyOf(text.value("duration_seconds"));
  file.cleaned = copyOf(text.value("cleaned"));
  file.edited = copyOf(text.value("edited"));
  file.cleanupModel = copyOf(text.value("cleanup_model"));
  file.language = copyOf(text.value("language"));
  file.tags = copyOf(text.value("tags"));
  file.body = text.body;
  const std::string written = file.text();
  const EntryReading again = EntryText::read(written);
  mustHold(static_cast<bool>(again), "an entry that is written as a file is an entry");
  mustHold(again->body == text.body, "the body that was written is read again");
  for (const std::string_view key : keys)
    mustHold(again->value(key) == text.value(key), "a value that was written is read again");
}

// Whatever stands below a front matter is the body.
void checkBody(const std::string& body) {
  const std::string written = EntryFile{.body = body}.text();
  const EntryReading text = EntryText::read(written);
  mustHold(text && text->body == trimWhitespacesAndNewlines(body),
           "what stands below a front matter is the body");
}

void checkEntry(const EntryText& text, const Entry& entry) {
  mustHold(entry.body == text.body && entry.date == text.date, "body and date are those of the file");
  mustHold(entry.cleanupModel == copyOf(text.value("cleanup_model")) &&
               entry.language == copyOf(text.value("language")),
           "model and language are those of the file");
  for (const std::string& tag : entry.tags) {
    mustHold(looksCanonical(tag), "every tag is canonical");
    mustHold(std::count(entry.tags.begin(), entry.tags.end(), tag) == 1, "no tag comes twice");
    mustHold(text.hasTag(tag), "an entry has its tags");
  }
  const std::string_view line = entry.firstLine();
  mustHold(trimWhitespacesButNewlines(line) == line, "the first line has no blanks at its ends");
  mustHold(line.empty() == entry.body.empty(), "a body that is not empty has a first line");
  mustHold(entry.body.starts_with(line), "the first line is what the body begins with");
}

void checkEquality(const Entry& entry, const Entry& twin) {
  const std::hash<Entry> hash;
  mustHold(entry == twin && hash(entry) == hash(twin), "the same file makes the same entry");
  Entry other = entry;
  other.body = decomposed(entry.body);
  mustHold(entry == other && hash(entry) == hash(other), "an equivalent text makes an equal entry");
  other.body += "x";
  mustHold(!(entry == other) && !(other == entry), "another body makes another entry");
}

// A part of the file may be enough to know the head of its entry. What is known must be right.
void checkHead(std::string_view file, const EntryText& text) {
  mustHold(EntryHead::read(file) || file.ends_with("---"), "the whole file is enough");
  for (const std::size_t length : {file.size() / 4, file.size() / 2, file.size() - 1, file.size()}) {
    const std::optional<EntryHead> head = EntryHead::read(file.substr(0, length));
    mustHold(!head || (head->date == text.date && head->tags == text.tags), "a head is that of its entry");
  }
}

}  // namespace
}  // namespace halvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halvane;
  const std::string_view file(reinterpret_cast<const char*>(data), size);
  checkBody(repairUtf8(file));
  EntryHead::read(file);  // any bytes
  const EntryReading text = EntryText::read(file);
  if (!text) return 0;
  checkHead(file, *text);
  checkValues(*text, file);
  checkReadAgain(*text);
  const Entry entry = text->entry({"/journal/x.md"});
  checkEntry(*text, entry);
  checkEquality(entry, text->entry({"/journal/x.md"}));
  return 0;
}
