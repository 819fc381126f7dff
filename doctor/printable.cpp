#include "doctor/printable.h"

#include <unicode/uchar.h>

#include "text/text.h"
#include "text/utf8.h"

namespace halvane {
namespace {

constexpr char32_t nonJoiner = 0x200C;
constexpr char32_t joiner = 0x200D;
constexpr char32_t replacement = 0xFFFD;

bool isPrintable(char32_t character) {
  constexpr std::uint32_t others =
      U_GC_CC_MASK | U_GC_CF_MASK | U_GC_ZL_MASK | U_GC_ZP_MASK | U_GC_CS_MASK | U_GC_CO_MASK | U_GC_CN_MASK;
  if (character == nonJoiner || character == joiner) return true;
  return (U_GET_GC_MASK(static_cast<UChar32>(character)) & others) == 0;
}

}  // namespace

std::string printable(std::string_view text) {
  const std::string repaired = repairUtf8(text);
  std::string shown;
  for (std::size_t at = 0; at < repaired.size();) {
    const char32_t character = nextCodePoint(repaired, at);
    appendCodePoint(shown, isPrintable(character) ? character : replacement);
  }
  return shown;
}

}  // namespace halvane
