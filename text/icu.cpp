#include "text/icu.h"

#include <limits>
#include <new>

namespace halvane {

void check(UErrorCode status) {
  if (U_FAILURE(status)) throw std::bad_alloc();
}

std::int32_t icuLength(std::string_view text) {
  if (text.size() > std::numeric_limits<std::int32_t>::max()) throw std::bad_alloc();
  return static_cast<std::int32_t>(text.size());
}

icu::StringPiece icuPiece(std::string_view text) {
  return {text.data(), icuLength(text)};
}

const icu::Normalizer2& icuNfc() {
  UErrorCode status = U_ZERO_ERROR;
  const icu::Normalizer2* instance = icu::Normalizer2::getNFCInstance(status);
  check(status);
  return *instance;
}

}  // namespace halvane
