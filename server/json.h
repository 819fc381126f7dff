#pragma once

// Reads, queries, builds and writes JSON values.

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

/// One JSON value (RFC 8259), read or to be written. Texts are UTF-8 and may contain NULs. A value owns
/// everything in it. A value that was read has at most 512 levels, so no walk over it goes deeper.
class JsonValue {
 public:
  struct Member;
  using Array = std::vector<JsonValue>;
  using Object = std::vector<Member>;
  /// A number as it was written. 1.10, 1e2 and thirty digits are written again digit for digit.
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

  /// Reads the whole of `text`, which must be UTF-8, strictly as one JSON text. A byte-order mark is not
  /// JSON. If the text is an object, keeps only those of its members that `keptMembers` names; the others are
  /// checked, dropped, and take no memory. Of members with the same name, the last one counts. An escaped
  /// surrogate without its partner reads as U+FFFD. Nothing when `text` is not JSON, or is nested deeper than
  /// 512 levels, and with older versions of Boost when the exponent of a number has more than nine digits.
  static std::optional<JsonValue> parse(std::string_view text, std::span<const std::string_view> keptMembers);

  /// The compact JSON text, UTF-8, without white space between tokens and with every "/" in a text escaped.
  std::string serialise() const;

  bool isObject() const { return std::holds_alternative<Object>(value_); }
  /// The text; null when this is not a text. Valid as long as this value.
  const std::string* text() const { return std::get_if<std::string>(&value_); }
  /// The member called `name`; null when there is none or this is not an object. Valid as long as this value.
  const JsonValue* find(std::string_view name) const;
  /// The text of the member called `name`, found as `find` does; nothing when there is no such member or it
  /// is not a text. Valid as long as this value.
  std::optional<std::string_view> textIn(std::string_view name) const;
  /// The number, if its exact decimal value is whole and fits into 64 bits (10, 10.0 and 1e1 are ten);
  /// nothing otherwise, and when this is not a number.
  std::optional<std::int64_t> wholeNumber() const;

 private:
  void appendTo(std::string& out) const;

  std::variant<std::nullptr_t, bool, Number, std::string, Array, Object> value_;
};

struct JsonValue::Member {
  std::string name;
  JsonValue value;
};

// A value may contain a list of members, so it can only be made here, where a member is a complete type.
inline JsonValue::JsonValue(bool value) : value_(value) {}
inline JsonValue::JsonValue(std::int64_t value) : value_(Number{std::to_string(value)}) {}
inline JsonValue::JsonValue(Number value) : value_(std::move(value)) {}
inline JsonValue::JsonValue(std::string value) : value_(std::move(value)) {}
inline JsonValue::JsonValue(std::string_view value) : value_(std::string(value)) {}
inline JsonValue::JsonValue(const char* value) : value_(std::string(value)) {}
inline JsonValue::JsonValue(Array value) : value_(std::move(value)) {}
inline JsonValue::JsonValue(Object value) : value_(std::move(value)) {}

// The code that builds a value looks like the JSON: object(member("code", code), member("message",
// std::move(text))). What is moved into it is not copied.

/// A member of an object: its name, and anything from which a JsonValue can be made.
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

/// An array of these items, each anything from which a JsonValue can be made.
template <typename... Items>
JsonValue array(Items&&... items) {
  JsonValue::Array list;
  list.reserve(sizeof...(items));
  (list.push_back(JsonValue(std::forward<Items>(items))), ...);
  return JsonValue(std::move(list));
}

}  // namespace halvane
