#include "fuzz/canonical_tag.h"

#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/uniset.h>
#include <unicode/unistr.h>

#include <cstdint>
#include <memory>

#include "fuzz/property.h"
#include "text/utf8.h"

namespace halvane {
namespace {

const icu::UnicodeSet& alphabet() {
  static UErrorCode status = U_ZERO_ERROR;
  static const icu::UnicodeSet set(u"[[:L:][:M:]0-9\\-]", status);
  mustHold(U_SUCCESS(status), "ICU knows the alphabet of tags");
  return set;
}

int countOfCharacters(const icu::UnicodeString& text) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::BreakIterator> breaks(
      icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
  mustHold(U_SUCCESS(status), "ICU counts characters");
  breaks->setText(text);
  int count = 0;
  while (breaks->next() != icu::BreakIterator::DONE) ++count;
  return count;
}

}  // namespace

bool looksCanonical(std::string_view tag) {
  if (!isUtf8(tag)) return false;
  const auto text = icu::UnicodeString::fromUTF8({tag.data(), static_cast<std::int32_t>(tag.size())});
  const int count = countOfCharacters(text);
  return alphabet().span(text, 0, USET_SPAN_SIMPLE) == text.length() && !text.startsWith(u'-') &&
         !text.endsWith(u'-') && icu::UnicodeString(text).toLower(icu::Locale::getRoot()) == text &&
         count >= 1 && count <= 30;
}

}  // namespace halvane
