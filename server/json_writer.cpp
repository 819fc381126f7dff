#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "server/json.h"

namespace halvane {
namespace {

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

constexpr std::array<bool, 256> escapedBytes = [] {
  std::array<bool, 256> escaped{};
  std::fill_n(escaped.begin(), 0x20, true);
  for (const char special : {'"', '\\', '/'}) escaped[static_cast<unsigned char>(special)] = true;
  return escaped;
}();

bool mustBeEscaped(char character) {
  return escapedBytes[static_cast<unsigned char>(character)];
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

}  // namespace halvane
