#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/property.h"
#include "search/text_search.h"
#include "tests/search/plain_search.h"
#include "text/text.h"
#include "text/utf8.h"

// The fast search held against its plain judge. The input is a "T" for Turkish or anything else, the query, a
// byte 0xFF, which is in no UTF-8, and the body. Without a query the body is searched for its own middle in
// small letters, so that there is something to find whatever the body is. The judge takes a step for each
// character of the body and of the query, so both are short.

namespace halvane {
namespace {

constexpr std::size_t longestQuery = 48;
constexpr std::size_t longestBody = 400;

std::string middleOf(std::string_view body) {
  const auto startOfCharacter = [&](std::size_t at) {
    while (at < body.size() && U8_IS_TRAIL(body[at])) ++at;
    return at;
  };
  const std::size_t begin = startOfCharacter(body.size() / 3);
  const std::size_t end = startOfCharacter(std::min(2 * body.size() / 3, begin + longestQuery));
  return lowercased(body.substr(begin, std::max(begin, end) - begin));
}

void compare(std::string_view query, std::string_view body, LetterI letterI) {
  if (query.empty()) return;
  const std::optional<TextMatch> expected = plainSearch(query, body, letterI);
  const TextSearch search(query, letterI);
  const std::optional<TextMatch> found = search.find(body);
  search.mayBeWithin(std::string(query) + "\xE2\x80" +
                     std::string(body.substr(body.size() / 3)));  // any bytes
  mustHold(!found || search.mayBeWithin("---\n" + std::string(body) + "\n"),
           "what is found in a body may be within its file");
  mustHold(found.has_value() == expected.has_value(), "the judge finds a match when the search does");
  if (!found) return;
  mustHold(found->begin == expected->begin, "the match begins where the judge sees it begin");
  mustHold(found->end == expected->end, "the match ends where the judge sees it end");
}

}  // namespace
}  // namespace halvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halvane;
  if (size == 0) return 0;
  const LetterI letterI = data[0] == 'T' ? LetterI::dottedAndDotless : LetterI::oneLetter;
  const std::string_view input(reinterpret_cast<const char*>(data) + 1, size - 1);
  const std::size_t separator = std::min(input.find('\xFF'), input.size());
  const std::string query = repairUtf8(input.substr(0, std::min(separator, longestQuery)));
  const std::string_view rest = input.substr(std::min(separator + 1, input.size()));
  const std::string body = repairUtf8(rest.substr(0, longestBody));
  compare(query.empty() ? middleOf(body) : query, body, letterI);
  return 0;
}
