#include "text/characters.h"

#include <unicode/brkiter.h>
#include <unicode/utext.h>

#include <algorithm>
#include <cstdint>
#include <utility>

#include "text/icu.h"
#include "text/text.h"

namespace halvane {
namespace {

// Whether a user-perceived character ends at `position`, inside the text, because ASCII stands on both sides.
bool partsAscii(std::string_view text, std::size_t position) {
  const char before = text[position - 1];
  const char after = text[position];
  return isAscii(before) && isAscii(after) && !(before == '\r' && after == '\n');
}

}  // namespace

struct Characters::Iterator {
  UText text = UTEXT_INITIALIZER;
  std::unique_ptr<icu::BreakIterator> breaks;
  ~Iterator() { utext_close(&text); }
};

Characters::Characters(std::string_view text) : text_(text) {
  icuLength(text);
}

Characters::~Characters() = default;

// Opened only for text that needs it.
Characters::Iterator& Characters::iterator() {
  if (iterator_) return *iterator_;
  auto opened = std::make_unique<Iterator>();
  UErrorCode status = U_ZERO_ERROR;
  opened->breaks.reset(icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  check(status);
  utext_openUTF8(&opened->text, text_.data(), icuLength(text_), &status);
  check(status);
  opened->breaks->setText(&opened->text, status);
  check(status);
  iterator_ = std::move(opened);
  return *iterator_;
}

std::size_t Characters::startOf(std::size_t position) {
  if (position == 0 || position >= text_.size()) return std::min(position, text_.size());
  if (partsAscii(text_, position)) return position;
  icu::BreakIterator& breaks = *iterator().breaks;
  if (breaks.isBoundary(static_cast<std::int32_t>(position))) return position;
  return static_cast<std::size_t>(breaks.previous());  // isBoundary left it at the boundary after
}

std::size_t Characters::back(std::size_t position, std::size_t count) {
  for (; count > 0 && position > 0; --count) {
    position =
        position == 1 || partsAscii(text_, position - 1)
            ? position - 1
            : static_cast<std::size_t>(iterator().breaks->preceding(static_cast<std::int32_t>(position)));
  }
  return position;
}

std::size_t Characters::forward(std::size_t position, std::size_t count) {
  for (; count > 0 && position < text_.size(); --count) {
    position =
        position + 1 == text_.size() || partsAscii(text_, position + 1)
            ? position + 1
            : static_cast<std::size_t>(iterator().breaks->following(static_cast<std::int32_t>(position)));
  }
  return position;
}

}  // namespace halvane
