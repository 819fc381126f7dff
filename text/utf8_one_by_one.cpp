#include <unicode/utf8.h>

#include <cstdint>
#include <cstring>

#include "text/utf8_blocks.h"

namespace halvane {

bool isUtf8OneByOne(const char* bytes, std::size_t length) {
  const auto* text = reinterpret_cast<const std::uint8_t*>(bytes);
  for (std::size_t at = 0; at < length;) {
    std::uint64_t eight;
    if (length - at >= sizeof(eight)) {
      std::memcpy(&eight, text + at, sizeof(eight));
      if ((eight & 0x8080808080808080) == 0) {
        at += sizeof(eight);
        continue;
      }
    }
    UChar32 character;
    U8_NEXT(text, at, length, character);
    if (character < 0) return false;
  }
  return true;
}

}  // namespace halvane
