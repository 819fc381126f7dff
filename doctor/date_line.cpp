#include "doctor/date_line.h"

#include <algorithm>
#include <array>

#include "text/text.h"
#include "tools/date_style.h"

namespace halvane {
namespace {

constexpr std::array<char32_t, 3> directionMarks = {0x061C, 0x200E, 0x200F};

}  // namespace

std::string dateInWords(Instant moment) {
  const std::string words = dateStyle.words().of(moment);
  std::string visible;
  for (std::size_t at = 0; at < words.size();) {
    const char32_t character = nextCodePoint(words, at);
    if (std::find(directionMarks.begin(), directionMarks.end(), character) == directionMarks.end())
      appendCodePoint(visible, character);
  }
  return visible;
}

}  // namespace halvane
