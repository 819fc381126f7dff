#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/property.h"
#include "text/processor.h"
#include "text/utf8.h"
#include "text/utf8_blocks.h"

// Well-formedness and repair of UTF-8, held against ICU's converter to UTF-16. The input is the bytes.

namespace halvane {
namespace {

bool isUtf8ToIcu(std::string_view bytes) {
  UErrorCode status = U_ZERO_ERROR;
  u_strFromUTF8(nullptr, 0, nullptr, bytes.data(), static_cast<std::int32_t>(bytes.size()), &status);
  return status != U_INVALID_CHAR_FOUND;
}

std::string repairedByIcu(std::string_view bytes) {
  std::string repaired;
  return icu::UnicodeString::fromUTF8({bytes.data(), static_cast<std::int32_t>(bytes.size())})
      .toUTF8String(repaired);
}

void compare(std::string_view bytes) {
  const bool wellFormed = isUtf8ToIcu(bytes);
  mustHold(isUtf8(bytes) == wellFormed, "ICU says the same of the bytes");
  if (canShuffleBytes())
    mustHold(isUtf8InBlocks(bytes.data(), bytes.size()) == wellFormed, "in blocks it comes out the same");
  if (hasWideBlocks())
    mustHold(isUtf8InWideBlocks(bytes.data(), bytes.size()) == wellFormed,
             "in wide blocks it comes out the same");

  const std::string repaired = repairUtf8(bytes);
  mustHold(repaired == repairedByIcu(bytes), "ICU repairs the bytes alike");
  mustHold(isUtf8(repaired), "repaired bytes are well-formed");
  mustHold((repaired == bytes) == wellFormed, "only what is not well-formed is changed");
}

}  // namespace
}  // namespace halvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  halvane::compare(bytes);
  // The same bytes at every place of a block of sixteen, and across the end of eight blocks, at which a check
  // in blocks may pause.
  std::string moved = std::string(112, 'x').append(bytes);
  for (int place = 0; place < 16; ++place) {
    halvane::compare(moved);
    halvane::compare(moved + std::string(256, 'y'));
    moved.insert(moved.begin(), 'x');
  }
  return 0;
}
