#include "server/json.h"

#include <algorithm>
#include <charconv>

namespace halvane {

const JsonValue* JsonValue::find(std::string_view name) const {
  const auto* object = std::get_if<Object>(&value_);
  if (object == nullptr) return nullptr;
  const auto found = std::find_if(object->begin(), object->end(),
                                  [name](const Member& member) { return member.name == name; });
  return found == object->end() ? nullptr : &found->value;
}

std::optional<std::string_view> JsonValue::textIn(std::string_view name) const {
  const JsonValue* member = find(name);
  const std::string* text = member == nullptr ? nullptr : member->text();
  return text == nullptr ? std::nullopt : std::optional<std::string_view>(*text);
}

std::optional<std::int64_t> JsonValue::wholeNumber() const {
  const auto* number = std::get_if<Number>(&value_);
  if (number == nullptr) return std::nullopt;
  std::string_view rest = number->digits;

  constexpr std::int64_t beyondAllPlaces = std::int64_t{1} << 62;
  std::int64_t exponent = 0;
  if (const std::size_t e = rest.find_first_of("eE"); e != std::string_view::npos) {
    const std::size_t begin = rest[e + 1] == '+' ? e + 2 : e + 1;
    const auto [end, error] = std::from_chars(rest.data() + begin, rest.data() + rest.size(), exponent);
    // No number has enough digits to compensate for such an exponent.
    if (error == std::errc::result_out_of_range)
      exponent = rest[begin] == '-' ? -beyondAllPlaces : beyondAllPlaces;
    rest = rest.substr(0, e);
  }
  std::string digits(rest);
  if (const std::size_t point = digits.find('.'); point != std::string::npos) {
    exponent -= static_cast<std::int64_t>(digits.size() - point - 1);
    digits.erase(point, 1);
  }
  // The rest is digits times a power of ten. Without zeros at the end, a negative power means a fraction, and
  // more than nineteen digits don't fit into 64 bits.
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
