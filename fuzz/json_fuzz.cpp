#include <algorithm>
#include <array>
#include <boost/json.hpp>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/property.h"
#include "server/json.h"
#include "server/lone_surrogates.h"
#include "text/utf8.h"

// Reading JSON and writing it again. The input is the JSON text, looked at as a message, of whose members
// only some are kept, and inside an array, of which everything is kept.

namespace halvane {
namespace {

constexpr std::array<std::string_view, 3> keptMembers = {"method", "id", "params"};

// The other reader takes every number for a double.
boost::json::value readByAnother(std::string_view text) {
  boost::json::parse_options options;
  options.max_depth = 512;
  boost::system::error_code error;
  boost::json::value value = boost::json::parse(boost::json::string_view(text), error, {}, options);
  mustHold(!error, "what we read or wrote is JSON to another reader");
  return value;
}

bool isEscapedThroughout(std::string_view line) {
  for (std::size_t at = 0; at < line.size(); ++at) {
    if (line[at] == '\\') {
      ++at;  // whatever it is, it is escaped
    } else if (line[at] == '/' || static_cast<unsigned char>(line[at]) < 0x20) {
      return false;
    }
  }
  return true;
}

void checkWholeNumber(const JsonValue& value) {
  const std::optional<std::int64_t> whole = value.wholeNumber();
  if (!whole) return;
  // A long double has room for every digit of 64 bits.
  mustHold(std::strtold(value.serialise().c_str(), nullptr) == static_cast<long double>(*whole),
           "a whole number is the number that was written");
}

// What `text` is written as; nothing when it is no JSON.
std::optional<std::string> written(std::string_view text) {
  const std::optional<JsonValue> value = JsonValue::parse(text, keptMembers);
  if (!value) return std::nullopt;
  std::string line = value->serialise();
  mustHold(isUtf8(line), "what is written is UTF-8");
  mustHold(isEscapedThroughout(line), "control characters and slashes are written escaped");
  const std::optional<JsonValue> again = JsonValue::parse(line, keptMembers);
  mustHold(again.has_value(), "what was written can be read");
  mustHold(again->serialise() == line, "what was read again is written alike");
  for (const std::string_view name : keptMembers) {
    if (const JsonValue* member = value->find(name)) checkWholeNumber(*member);
  }
  return line;
}

}  // namespace
}  // namespace halvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halvane;
  const std::string text = repairUtf8({reinterpret_cast<const char*>(data), size});
  written(text);
  const std::string inArray = "[" + text + "]";
  if (const std::optional<std::string> line = written(inArray)) {
    // The other reader knows no text with half an emoji.
    const boost::json::value meant = readByAnother(withoutLoneSurrogates(inArray).value_or(inArray));
    // A zero with a huge exponent is no number to the other reader, and so equal to nothing.
    if (meant == meant) mustHold(readByAnother(*line) == meant, "what was written means what was read");
  }
  return 0;
}
