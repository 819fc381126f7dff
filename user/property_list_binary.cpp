#include <unicode/utf16.h>

#include <algorithm>
#include <cstdint>

#include "text/text.h"
#include "user/property_list.h"

// The binary form: objects that refer to one another by their numbers, a table of where each one begins, and
// a trailer that says where the table is. We look only at the outermost dictionary, its names and its texts,
// so objects that refer to themselves, or a thousand times to the same object, cost nothing.

namespace halvane {
namespace {

constexpr std::size_t trailerSize = 32;
enum class Kind : std::uint8_t { asciiText = 0x5, utf16Text = 0x6, dictionary = 0xD };

struct Object {
  Kind kind;
  std::uint64_t count;  // of characters or items
  std::uint64_t begin;  // of the content
};

// Limits the number of characters that we look at. The same long text may have many names, and a long text
// may turn out to be invalid at its last byte. No application keeps so many.
class Room {
 public:
  // False when there is no room left for the characters of `object`, if it is a text.
  bool takeIn(const Object& object) {
    if (object.kind != Kind::asciiText && object.kind != Kind::utf16Text) return true;
    if (object.count > left_) return false;
    left_ -= object.count;
    return true;
  }

 private:
  std::uint64_t left_ = 64 << 20;
};

class BinaryList {
 public:
  explicit BinaryList(std::string_view bytes) : bytes_(bytes) {}

  std::optional<PropertyTexts> texts() {
    if (bytes_.size() < trailerSize) return std::nullopt;
    const std::size_t trailer = bytes_.size() - trailerSize;
    offsetSize_ = number(trailer + 6, 1).value_or(0);
    referenceSize_ = number(trailer + 7, 1).value_or(0);
    objectCount_ = number(trailer + 8, 8).value_or(0);
    table_ = number(trailer + 24, 8).value_or(0);
    if (objectCount_ > bytes_.size() || table_ > bytes_.size()) return std::nullopt;
    const std::optional<Object> top = object(number(trailer + 16, 8).value_or(0));
    if (!top || top->kind != Kind::dictionary || top->count > bytes_.size()) return std::nullopt;
    return textsOf(*top);
  }

 private:
  std::optional<PropertyTexts> textsOf(const Object& dictionary) const {
    PropertyTexts texts;
    Room room;
    for (std::uint64_t i = 0; i < dictionary.count; ++i) {
      const std::optional<Object> name = referred(dictionary, i);
      const std::optional<Object> value = referred(dictionary, dictionary.count + i);
      if (!name || !value || !room.takeIn(*name) || !room.takeIn(*value)) return std::nullopt;
      std::optional<std::string> key = text(*name);
      if (!key) return std::nullopt;
      std::optional<std::string> content = text(*value);
      if (content) {
        texts.insert_or_assign(std::move(*key), std::move(*content));
      } else {
        texts.erase(*key);
      }
    }
    return texts;
  }

  // A number of up to eight bytes, the most significant first; nothing at the end of the list.
  std::optional<std::uint64_t> number(std::uint64_t at, std::uint64_t size) const {
    if (size == 0 || size > 8 || at > bytes_.size() || size > bytes_.size() - at) return std::nullopt;
    std::uint64_t value = 0;
    for (const char byte : bytes_.substr(at, size)) value = value << 8 | static_cast<unsigned char>(byte);
    return value;
  }

  std::optional<Object> object(std::uint64_t index) const {
    if (index >= objectCount_) return std::nullopt;
    const std::optional<std::uint64_t> at = number(table_ + index * offsetSize_, offsetSize_);
    const std::optional<std::uint64_t> marker = at ? number(*at, 1) : std::nullopt;
    if (!marker) return std::nullopt;
    Object object{static_cast<Kind>(*marker >> 4), *marker & 0xF, *at + 1};
    if (object.count < 0xF) return object;
    // A count that doesn't fit into the marker follows as a number with another marker.
    const std::optional<std::uint64_t> countMarker = number(object.begin, 1);
    if (!countMarker || *countMarker >> 4 != 0x1) return notText(object);
    const std::uint64_t size = std::uint64_t{1} << (*countMarker & 0xF);
    const std::optional<std::uint64_t> count = number(object.begin + 1, size);
    if (!count) return notText(object);
    return Object{object.kind, *count, object.begin + 1 + size};
  }

  // In some of the other kinds, the lower half of the marker has another meaning.
  static std::optional<Object> notText(const Object& object) {
    const bool counted =
        object.kind == Kind::asciiText || object.kind == Kind::utf16Text || object.kind == Kind::dictionary;
    return counted ? std::nullopt : std::optional<Object>(object);
  }

  std::optional<Object> referred(const Object& dictionary, std::uint64_t place) const {
    const std::optional<std::uint64_t> index =
        number(dictionary.begin + place * referenceSize_, referenceSize_);
    return index ? object(*index) : std::nullopt;
  }

  // Nothing for an object that is not a text or has no end.
  std::optional<std::string> text(const Object& object) const {
    const std::uint64_t rest = bytes_.size() - std::min<std::uint64_t>(object.begin, bytes_.size());
    if (object.kind == Kind::asciiText && object.count <= rest) {
      const std::string_view content = bytes_.substr(object.begin, object.count);
      const bool ascii = std::all_of(content.begin(), content.end(),
                                     [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
      return ascii ? std::optional<std::string>(content) : std::nullopt;
    }
    if (object.kind != Kind::utf16Text || object.count > rest / 2) return std::nullopt;
    return utf8Of(object);
  }

  // Half a pair of surrogates becomes U+FFFD. (ICU's conversion keeps silent when it finds no memory.)
  std::string utf8Of(const Object& utf16) const {
    const auto unit = [&](std::uint64_t index) {
      return static_cast<char32_t>(number(utf16.begin + 2 * index, 2).value_or(0));
    };
    std::string utf8;
    for (std::uint64_t i = 0; i < utf16.count; ++i) {
      char32_t character = unit(i);
      if (U16_IS_LEAD(character) && i + 1 < utf16.count && U16_IS_TRAIL(unit(i + 1))) {
        character = static_cast<char32_t>(U16_GET_SUPPLEMENTARY(character, unit(++i)));
      } else if (U16_IS_SURROGATE(character)) {
        character = U'\uFFFD';
      }
      appendCodePoint(utf8, character);
    }
    return utf8;
  }

  std::string_view bytes_;
  std::uint64_t offsetSize_ = 0;
  std::uint64_t referenceSize_ = 0;
  std::uint64_t objectCount_ = 0;
  std::uint64_t table_ = 0;
};

}  // namespace

std::optional<PropertyTexts> textsOfBinaryPropertyList(std::string_view list) {
  return BinaryList(list).texts();
}

}  // namespace halvane
