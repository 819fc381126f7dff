#pragma once

// JSON values: read from a line, asked for their members, put together and written.

#include <concepts>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace halvane {

/// One JSON value (RFC 8259), as it was read or as it will be written. Texts are UTF-8 and may hold NULs.
/// A value owns everything in it. Reading allows 512 levels, so no walk over a value goes deeper than that.
class JsonValue {
 public:
  struct Member;
  using Array = std::vector<JsonValue>;
  using Object = std::vector<Member>;
  /// A number as it was written: 1.10, 1e2 and thirty digits come out again digit for digit.
  struct Number {
    std::string digits;
  };

  /// Null.
  JsonValue() = default;
  explicit JsonValue(bool value);
  explicit JsonValue(std::int64_t value);
  explicit JsonValue(Number value);
  /// A text, UTF-8.
  explicit JsonValue(std::string value);
  explicit JsonValue(std::string_view value);
  explicit JsonValue(const char* value);
  explicit JsonValue(Array value);
  explicit JsonValue(Object value);

  /// Reads one JSON text, strictly, the whole of `text`, which must be UTF-8; a byte-order mark is no JSON.
  /// When it is an object, only its members named in `keptMembers` are kept: the others are checked and
  /// dropped, and cost no memory. An escaped surrogate without its partner reads as U+FFFD. Nothing when it
  /// is not JSON, is nested deeper than 512 levels, or holds a number whose exponent has more than nine
  /// digits.
  static std::optional<JsonValue> parse(std::string_view text, std::span<const std::string_view> keptMembers);

  /// The compact JSON text, UTF-8, without white space between tokens and with every "/" in a text escaped.
  std::string serialise() const;

  bool isObject() const { return std::holds_alternative<Object>(value_); }
  /// The text; null when this is no text. Valid as long as this value.
  const std::string* text() const { return std::get_if<std::string>(&value_); }
  /// The member called `name`; the last one, when there are several; null when there is none or this is no
  /// object. Valid as long as this value.
  const JsonValue* find(std::string_view name) const;
  /// The text of the member called `name`, found as `find` does; nothing when there is none or it is no text.
  /// Valid as long as this value.
  std::optional<std::string_view> textIn(std::string_view name) const;
  /// The number when it is whole and fits 64 bits by its exact decimal value (10, 10.0 and 1e1 are ten);
  /// nothing otherwise, and for whatever is no number.
  std::optional<std::int64_t> wholeNumber() const;

 private:
  void appendTo(std::string& out) const;

  std::variant<std::nullptr_t, bool, Number, std::string, Array, Object> value_;
};

struct JsonValue::Member {
  std::string name;
  JsonValue value;
};

// Only here, where a member is a complete type, can a value that may hold a list of them be made.
inline JsonValue::JsonValue(bool value) : value_(value) {}
inline JsonValue::JsonValue(std::int64_t value) : value_(Number{std::to_string(value)}) {}
inline JsonValue::JsonValue(Number value) : value_(std::move(value)) {}
inline JsonValue::JsonValue(std::string value) : value_(std::move(value)) {}
inline JsonValue::JsonValue(std::string_view value) : value_(std::string(value)) {}
inline JsonValue::JsonValue(const char* value) : value_(std::string(value)) {}
inline JsonValue::JsonValue(Array value) : value_(std::move(value)) {}
inline JsonValue::JsonValue(Object value) : value_(std::move(value)) {}

// A value is put together as it is written: object(member("code", code), member("message", std::move(text))).
// Whatever is moved in is not copied on its way.

/// A member of an object: its name and anything that a JsonValue can be made of.
template <typename Value>
JsonValue::Member member(std::string name, Value&& value) {
  return {std::move(name), JsonValue(std::forward<Value>(value))};
}

/// An object with these members, in this order.
template <std::same_as<JsonValue::Member>... Members>
JsonValue object(Members... members) {
  JsonValue::Object list;
  list.reserve(sizeof...(members));
  (list.push_back(std::move(members)), ...);
  return JsonValue(std::move(list));
}

/// An array of these items, each anything that a JsonValue can be made of.
template <typename... Items>
JsonValue array(Items&&... items) {
  JsonValue::Array list;
  list.reserve(sizeof...(items));
  (list.push_back(JsonValue(std::forward<Items>(items))), ...);
  return JsonValue(std::move(list));
}

}  // namespace halvane
