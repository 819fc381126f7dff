#include "journal/entry.h"

#include <algorithm>

#include "text/text.h"
#include "text/utf8.h"

namespace halvane {
namespace {

template <typename Text>
bool sameText(const std::optional<Text>& left, const std::optional<Text>& right) {
  return left.has_value() == right.has_value() && (!left || canonicallyEqual(*left, *right));
}

// Hashes a stream of fields (FNV-1a, 64 bits). The length of each text comes before it. Otherwise
// neighbouring texts could be cut elsewhere and hash alike.
class Hasher {
 public:
  void feed(std::uint64_t number) {
    for (int shift = 0; shift < 64; shift += 8) feedByte(static_cast<std::uint8_t>(number >> shift));
  }
  void feed(std::int64_t number) { feed(static_cast<std::uint64_t>(number)); }
  void feed(bool value) { feedByte(value ? 1 : 0); }
  void feed(Instant moment) { feed(std::int64_t{moment.time_since_epoch().count()}); }
  void feed(const FileUrl& url) { feedBytes(url.path); }
  // Equivalent texts are equal, so they must hash alike.
  void feed(const std::string& text) { feedBytes(decomposed(text)); }
  template <typename Value>
  void feed(const std::optional<Value>& value) {
    feed(value.has_value());
    if (value) feed(*value);
  }
  std::uint64_t result() const { return hash_; }

 private:
  void feedBytes(const std::string& bytes) {
    feed(std::uint64_t{bytes.size()});
    for (const char byte : bytes) feedByte(static_cast<std::uint8_t>(byte));
  }
  void feedByte(std::uint8_t byte) { hash_ = (hash_ ^ byte) * 0x100000001B3; }

  std::uint64_t hash_ = 0xCBF29CE484222325;
};

}  // namespace

std::string FileUrl::text() const {
  return repairUtf8(path);
}

std::string_view Entry::firstLine() const {
  const std::size_t begin = body.find_first_not_of('\n');
  if (begin == std::string::npos) return {};
  std::size_t end = body.find('\n', begin);
  while (end != std::string::npos && body[end - 1] == '\r') end = body.find('\n', end + 1);
  return trimWhitespacesButNewlines(std::string_view(body).substr(begin, end - begin));
}

bool operator==(const Entry& left, const Entry& right) {
  return canonicallyEqual(left.id, right.id) && left.url == right.url && left.date == right.date &&
         left.durationSeconds == right.durationSeconds && left.cleaned == right.cleaned &&
         left.editedAt == right.editedAt && sameText(left.cleanupModel, right.cleanupModel) &&
         sameText(left.language, right.language) &&
         std::equal(left.tags.begin(), left.tags.end(), right.tags.begin(), right.tags.end(),
                    canonicallyEqual) &&
         canonicallyEqual(left.body, right.body);
}

std::string tagSuffix(const Entry& entry) {
  std::string suffix;
  for (const std::string& tag : entry.tags) suffix.append(" #").append(tag);
  return suffix;
}

}  // namespace halvane

std::size_t std::hash<halvane::Entry>::operator()(const halvane::Entry& entry) const {
  halvane::Hasher hasher;
  hasher.feed(entry.id);
  hasher.feed(entry.url);
  hasher.feed(entry.date);
  hasher.feed(entry.durationSeconds);
  hasher.feed(entry.cleaned);
  hasher.feed(entry.editedAt);
  hasher.feed(entry.cleanupModel);
  hasher.feed(entry.language);
  for (const std::string& tag : entry.tags) hasher.feed(tag);
  hasher.feed(entry.body);
  return static_cast<std::size_t>(hasher.result());
}
