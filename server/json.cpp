#include "server/json.h"

#include <algorithm>
#include <boost/json/basic_parser_impl.hpp>
#include <boost/json/src.hpp>
#include <charconv>
#include <unordered_set>

namespace halvane {
namespace {

namespace json = boost::json;

constexpr std::size_t deepestNesting = 512;

// Of members with one name the last one counts, as in the parsers that clients use.
void dropOverridden(JsonValue::Object& members) {
  if (members.size() < 2) return;
  std::unordered_set<std::string_view> seen;
  std::vector<bool> counts(members.size());
  for (std::size_t i = members.size(); i-- > 0;) counts[i] = seen.insert(members[i].name).second;
  if (seen.size() == members.size()) return;
  JsonValue::Object kept;
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (counts[i]) kept.push_back(std::move(members[i]));
  }
  members = std::move(kept);
}

// Builds a value from the parser's events.
class ValueBuilder {
 public:
  static constexpr std::size_t max_object_size = SIZE_MAX;
  static constexpr std::size_t max_array_size = SIZE_MAX;
  static constexpr std::size_t max_key_size = SIZE_MAX;
  static constexpr std::size_t max_string_size = SIZE_MAX;
  using Error = json::error_code;
  using Text = json::string_view;

  explicit ValueBuilder(std::span<const std::string_view> wanted) : wanted_(wanted) {}
  JsonValue take() { return std::move(complete_); }

  bool on_document_begin(Error&) { return true; }
  bool on_document_end(Error&) { return true; }
  bool on_object_begin(Error&) { return open(true); }
  bool on_object_end(std::size_t, Error&) { return close(); }
  bool on_array_begin(Error&) { return open(false); }
  bool on_array_end(std::size_t, Error&) { return close(); }
  bool on_key_part(Text part, std::size_t, Error&) { return append(part); }
  bool on_key(Text part, std::size_t, Error&) {
    append(part);
    if (dropping_) return true;
    const bool outermost = open_.size() == 1;
    dropping_ = outermost && std::find(wanted_.begin(), wanted_.end(), text_) == wanted_.end();
    open_.back().name = std::exchange(text_, {});
    return true;
  }
  bool on_string_part(Text part, std::size_t, Error&) { return append(part); }
  bool on_string(Text part, std::size_t, Error&) {
    append(part);
    return add(JsonValue(std::exchange(text_, {})));
  }
  bool on_number_part(Text part, Error&) { return append(part); }
  bool on_int64(std::int64_t, Text part, Error&) { return addNumber(part); }
  bool on_uint64(std::uint64_t, Text part, Error&) { return addNumber(part); }
  bool on_double(double, Text part, Error&) { return addNumber(part); }
  bool on_bool(bool value, Error&) { return add(JsonValue(value)); }
  bool on_null(Error&) { return add(JsonValue()); }
  bool on_comment_part(Text, Error&) { return false; }
  bool on_comment(Text, Error&) { return false; }

 private:
  struct Container {
    bool isObject;
    JsonValue::Array items;
    JsonValue::Object members;
    std::string name;  // of the member that is being read
  };

  bool open(bool isObject) {
    if (dropping_) {
      ++droppedDepth_;
    } else {
      open_.push_back({isObject, {}, {}, {}});
    }
    return true;
  }

  bool close() {
    if (dropping_) {
      --droppedDepth_;
      return add(JsonValue());
    }
    Container closed = std::move(open_.back());
    open_.pop_back();
    dropOverridden(closed.members);
    return add(closed.isObject ? JsonValue(std::move(closed.members)) : JsonValue(std::move(closed.items)));
  }

  bool append(Text part) {
    if (!dropping_) text_.append(part.data(), part.size());
    return true;
  }

  bool addNumber(Text part) {
    append(part);
    return add(JsonValue(JsonValue::Number{std::exchange(text_, {})}));
  }

  bool add(JsonValue value) {
    if (dropping_) {
      dropping_ = droppedDepth_ > 0;
    } else if (open_.empty()) {
      complete_ = std::move(value);
    } else if (open_.back().isObject) {
      open_.back().members.push_back({std::move(open_.back().name), std::move(value)});
    } else {
      open_.back().items.push_back(std::move(value));
    }
    return true;
  }

  std::span<const std::string_view> wanted_;
  std::vector<Container> open_;  // the outermost first
  std::string text_;             // the parts so far of the text, name or number that is being read
  bool dropping_ = false;        // inside the value of a member that nobody wants
  std::size_t droppedDepth_ = 0;
  JsonValue complete_;
};

void appendEscaped(std::string& out, char character) {
  constexpr std::string_view hexadecimal = "0123456789abcdef";
  out += '\\';
  switch (character) {
    case '\b':
      out += 'b';
      break;
    case '\t':
      out += 't';
      break;
    case '\n':
      out += 'n';
      break;
    case '\f':
      out += 'f';
      break;
    case '\r':
      out += 'r';
      break;
    case '"':
    case '\\':
    case '/':
      out += character;
      break;
    default:
      out.append("u00");
      out += hexadecimal[static_cast<unsigned char>(character) >> 4];
      out += hexadecimal[static_cast<unsigned char>(character) & 15];
  }
}

bool mustBeEscaped(char character) {
  return static_cast<unsigned char>(character) < 0x20 || character == '"' || character == '\\' ||
         character == '/';
}

void appendText(std::string& out, std::string_view text) {
  out += '"';
  for (auto plain = text.begin(); plain != text.end();) {
    const auto special = std::find_if(plain, text.end(), mustBeEscaped);
    out.append(plain, special);
    plain = special;
    if (special != text.end()) appendEscaped(out, *plain++);
  }
  out += '"';
}

}  // namespace

std::optional<JsonValue> JsonValue::parse(std::string_view text, std::span<const std::string_view> wanted) {
  json::parse_options options;
  options.max_depth = deepestNesting;
  json::basic_parser<ValueBuilder> parser(options, wanted);
  ValueBuilder::Error error;
  const std::size_t read = parser.write_some(false, text.data(), text.size(), error);
  if (error.failed() || read != text.size()) return std::nullopt;
  return parser.handler().take();
}

std::string JsonValue::serialise() const {
  std::string out;
  appendTo(out);
  return out;
}

void JsonValue::appendTo(std::string& out) const {
  if (const auto* array = std::get_if<Array>(&value_)) {
    char separator = '[';
    for (const JsonValue& item : *array) {
      out += std::exchange(separator, ',');
      item.appendTo(out);
    }
    out.append(array->empty() ? "[]" : "]");
  } else if (const auto* object = std::get_if<Object>(&value_)) {
    char separator = '{';
    for (const Member& member : *object) {
      out += std::exchange(separator, ',');
      appendText(out, member.name);
      out += ':';
      member.value.appendTo(out);
    }
    out.append(object->empty() ? "{}" : "}");
  } else if (const auto* string = std::get_if<std::string>(&value_)) {
    appendText(out, *string);
  } else if (const auto* number = std::get_if<Number>(&value_)) {
    out.append(number->digits);
  } else if (const auto* boolean = std::get_if<bool>(&value_)) {
    out.append(*boolean ? "true" : "false");
  } else {
    out.append("null");
  }
}

const JsonValue* JsonValue::find(std::string_view name) const {
  const auto* object = std::get_if<Object>(&value_);
  if (object == nullptr) return nullptr;
  const auto found = std::find_if(object->begin(), object->end(),
                                  [name](const Member& member) { return member.name == name; });
  return found == object->end() ? nullptr : &found->value;
}

std::optional<std::int64_t> JsonValue::wholeNumber() const {
  const auto* number = std::get_if<Number>(&value_);
  if (number == nullptr) return std::nullopt;
  std::string_view rest = number->digits;

  std::int64_t exponent = 0;
  if (const std::size_t e = rest.find_first_of("eE"); e != std::string_view::npos) {
    const std::size_t begin = rest[e + 1] == '+' ? e + 2 : e + 1;
    std::from_chars(rest.data() + begin, rest.data() + rest.size(), exponent);
    rest = rest.substr(0, e);
  }
  std::string digits(rest);
  if (const std::size_t point = digits.find('.'); point != std::string::npos) {
    exponent -= static_cast<std::int64_t>(digits.size() - point - 1);
    digits.erase(point, 1);
  }
  // What is left is digits times a power of ten. Without zeros at the end a negative power is a fraction, and
  // more than nineteen places are more than 64 bits.
  const std::size_t sign = digits.starts_with('-') ? 1 : 0;
  digits.erase(sign, std::min(digits.find_first_not_of('0', sign), digits.size()) - sign);
  if (digits.size() == sign) return 0;
  const std::size_t last = digits.find_last_not_of('0');
  exponent += static_cast<std::int64_t>(digits.size() - last - 1);
  digits.resize(last + 1);
  if (exponent < 0 || exponent > 19) return std::nullopt;
  digits.append(static_cast<std::size_t>(exponent), '0');

  std::int64_t whole = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), whole);
  if (error != std::errc()) return std::nullopt;
  return whole;
}

}  // namespace halvane
