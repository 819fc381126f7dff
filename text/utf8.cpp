#include "text/utf8.h"

#include <unicode/utf8.h>

#include <cstdint>

#include "text/processor.h"
#include "text/text.h"
#include "text/utf8_blocks.h"

namespace halvane {

bool isUtf8(std::string_view bytes) {
  static const auto isUtf8Here = hasWideBlocks()     ? isUtf8InWideBlocks
                                 : canShuffleBytes() ? isUtf8InBlocks
                                                     : isUtf8OneByOne;
  return isUtf8Here(bytes.data(), bytes.size());
}

std::string repairUtf8(std::string_view bytes) {
  if (isUtf8(bytes)) return std::string(bytes);
  std::string repaired;
  repaired.reserve(bytes.size());
  const auto* text = reinterpret_cast<const std::uint8_t*>(bytes.data());
  for (std::size_t at = 0; at < bytes.size();) {
    UChar32 character;
    U8_NEXT_OR_FFFD(text, at, bytes.size(), character);
    appendCodePoint(repaired, static_cast<char32_t>(character));
  }
  return repaired;
}

std::string_view withoutByteOrderMark(std::string_view text) {
  constexpr std::string_view mark = "\xEF\xBB\xBF";
  if (text.starts_with(mark)) text.remove_prefix(mark.size());
  return text;
}

}  // namespace halvane
