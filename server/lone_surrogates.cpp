#include "server/lone_surrogates.h"

#include <algorithm>
#include <charconv>
#include <system_error>

namespace halvane {
namespace {

constexpr std::string_view replacement = "\\ufffd";

// The UTF-16 code unit of an escape such as \ud83d at `at`; nothing when there is no such escape.
std::optional<unsigned> escapedUnit(std::string_view json, std::size_t at) {
  const std::string_view escape = json.substr(std::min(at, json.size()), replacement.size());
  if (escape.size() < replacement.size() || !escape.starts_with("\\u")) return std::nullopt;
  unsigned unit = 0;
  const char* end = escape.data() + escape.size();
  const auto [last, error] = std::from_chars(escape.data() + 2, end, unit, 16);
  if (error != std::errc() || last != end) return std::nullopt;
  return unit;
}

bool isHigh(std::optional<unsigned> unit) {
  return unit && *unit >= 0xD800 && *unit <= 0xDBFF;
}

bool isLow(std::optional<unsigned> unit) {
  return unit && *unit >= 0xDC00 && *unit <= 0xDFFF;
}

// The position of the first lone surrogate at or after `from`; npos when there is none. No escape may begin
// before `from` and end after it. We don't check that an escape is inside a text: elsewhere it is not JSON,
// neither before the replacement nor after it.
std::size_t findLoneSurrogate(std::string_view json, std::size_t from) {
  constexpr std::size_t length = replacement.size();
  for (std::size_t at = json.find('\\', from); at != std::string_view::npos; at = json.find('\\', from)) {
    const std::optional<unsigned> unit = escapedUnit(json, at);
    const bool isPair = isHigh(unit) && isLow(escapedUnit(json, at + length));
    if (!isPair && (isHigh(unit) || isLow(unit))) return at;
    // The character after a backslash doesn't begin an escape, even if it is another backslash.
    from = at + (isPair ? 2 * length : unit ? length : 2);
  }
  return std::string_view::npos;
}

}  // namespace

std::optional<std::string> withoutLoneSurrogates(std::string_view json) {
  std::size_t lone = findLoneSurrogate(json, 0);
  if (lone == std::string_view::npos) return std::nullopt;
  std::string repaired(json);
  for (; lone != std::string_view::npos; lone = findLoneSurrogate(json, lone + replacement.size())) {
    repaired.replace(lone, replacement.size(), replacement);
  }
  return repaired;
}

}  // namespace halvane
