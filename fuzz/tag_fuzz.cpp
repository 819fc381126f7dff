#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/canonical_tag.h"
#include "fuzz/plain_tag.h"
#include "fuzz/property.h"
#include "journal/entry.h"
#include "text/text.h"
#include "text/utf8.h"

// The canonical form of tags, held against its plain judge. The input is one text, looked at as a tag and as
// the value of a tags line.

namespace halvane {
namespace {

void checkTag(std::string_view text) {
  const std::optional<std::string> tag = Entry::normalizeTag(text);
  mustHold(tag == plainTag(text), "the judge makes the same tag of it");
  mustHold(Entry::normalizeTag(" \n" + std::string(text) + "\t ") == tag,
           "white space around a tag is nothing");
  mustHold(Entry::normalizeTag(decomposed(text)) == tag, "an equivalent text is the same tag");
  if (!tag) return;
  mustHold(looksCanonical(*tag), "a canonical tag has the letters, the case and the length of one");
  // What is left out between a letter and a mark brings the two together but doesn't compose them. So the
  // form of a canonical tag may differ from it, in that alone, and once.
  const std::optional<std::string> again = Entry::normalizeTag(*tag);
  mustHold(again == precomposed(*tag), "a canonical tag is its own form, composed");
  mustHold(Entry::normalizeTag(*again) == again, "a composed canonical tag is its own form");
}

std::vector<std::string> composedOnce(const std::vector<std::string>& tags) {
  std::vector<std::string> composed;
  for (const std::string& tag : tags) {
    const std::string form = precomposed(tag);
    if (std::find(composed.begin(), composed.end(), form) == composed.end()) composed.push_back(form);
  }
  return composed;
}

void checkTags(std::string_view value) {
  const std::vector<std::string> tags = Entry::parseTags(value);
  std::string list;
  for (const std::string& tag : tags) {
    mustHold(looksCanonical(tag), "every tag of a list is canonical");
    mustHold(std::count(tags.begin(), tags.end(), tag) == 1, "no tag of a list comes twice");
    list.append(list.empty() ? "[" : ", ").append(tag);
  }
  mustHold(Entry::parseTags(list + "]") == composedOnce(tags),
           "a list of canonical tags reads as these tags");
}

}  // namespace
}  // namespace halvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text = halvane::repairUtf8({reinterpret_cast<const char*>(data), size});
  halvane::checkTag(text);
  halvane::checkTags(text);
  return 0;
}
