#include <algorithm>
#include <boost/json/basic_parser_impl.hpp>
#include <boost/json/src.hpp>
#include <boost/system/error_code.hpp>
#include <cstdint>
#include <unordered_set>

#include "server/json.h"
#include "server/lone_surrogates.h"

namespace halvane {
namespace {

namespace json = boost::json;

constexpr std::size_t deepestNesting = 512;

// Of members with the same name, the last one counts, as in the parsers that clients use.
void dropOverridden(JsonValue::Object& members) {
  if (members.size() < 2) return;
  std::unordered_set<std::string_view> seen;
  std::vector<bool> counts(members.size());
  for (std::size_t i = members.size(); i-- > 0;) counts[i] = seen.insert(members[i].name).second;
  if (seen.size() == members.size()) return;
  JsonValue::Object kept;
  for (std::size_t i = 0; i < members.size(); ++i) {
    if (counts[i]) kept.push_back(std::move(members[i]));
  }
  members = std::move(kept);
}

// Builds a value from the parser's events.
class ValueBuilder {
 public:
  static constexpr std::size_t max_object_size = SIZE_MAX;
  static constexpr std::size_t max_array_size = SIZE_MAX;
  static constexpr std::size_t max_key_size = SIZE_MAX;
  static constexpr std::size_t max_string_size = SIZE_MAX;
  using Error = boost::system::error_code;
  using Text = json::string_view;

  explicit ValueBuilder(std::span<const std::string_view> keptMembers) : keptMembers_(keptMembers) {}
  JsonValue take() { return std::move(complete_); }

  bool on_document_begin(Error&) { return true; }
  bool on_document_end(Error&) { return true; }
  bool on_object_begin(Error&) { return open(true); }
  bool on_object_end(std::size_t, Error&) { return close(); }
  bool on_array_begin(Error&) { return open(false); }
  bool on_array_end(std::size_t, Error&) { return close(); }
  bool on_key_part(Text part, std::size_t, Error&) { return append(part); }
  bool on_key(Text part, std::size_t, Error&) {
    append(part);
    if (dropping_) return true;
    const bool outermost = open_.size() == 1;
    dropping_ = outermost && std::find(keptMembers_.begin(), keptMembers_.end(), text_) == keptMembers_.end();
    open_.back().name = std::exchange(text_, {});
    return true;
  }
  bool on_string_part(Text part, std::size_t, Error&) { return append(part); }
  bool on_string(Text part, std::size_t, Error&) {
    append(part);
    return add(JsonValue(std::exchange(text_, {})));
  }
  bool on_number_part(Text part, Error&) { return append(part); }
  bool on_int64(std::int64_t, Text part, Error&) { return addNumber(part); }
  bool on_uint64(std::uint64_t, Text part, Error&) { return addNumber(part); }
  bool on_double(double, Text part, Error&) { return addNumber(part); }
  bool on_bool(bool value, Error&) { return add(JsonValue(value)); }
  bool on_null(Error&) { return add(JsonValue()); }
  bool on_comment_part(Text, Error&) { return false; }
  bool on_comment(Text, Error&) { return false; }

 private:
  struct Container {
    bool isObject;
    JsonValue::Array items;
    JsonValue::Object members;
    std::string name;  // of the member that is being read
  };

  bool open(bool isObject) {
    if (dropping_) {
      ++droppedDepth_;
    } else {
      open_.push_back({isObject, {}, {}, {}});
    }
    return true;
  }

  bool close() {
    if (dropping_) {
      --droppedDepth_;
      return add(JsonValue());
    }
    Container closed = std::move(open_.back());
    open_.pop_back();
    dropOverridden(closed.members);
    return add(closed.isObject ? JsonValue(std::move(closed.members)) : JsonValue(std::move(closed.items)));
  }

  bool append(Text part) {
    if (!dropping_) text_.append(part.data(), part.size());
    return true;
  }

  bool addNumber(Text part) {
    append(part);
    return add(JsonValue(JsonValue::Number{std::exchange(text_, {})}));
  }

  bool add(JsonValue value) {
    if (dropping_) {
      dropping_ = droppedDepth_ > 0;
    } else if (open_.empty()) {
      complete_ = std::move(value);
    } else if (open_.back().isObject) {
      open_.back().members.push_back({std::move(open_.back().name), std::move(value)});
    } else {
      open_.back().items.push_back(std::move(value));
    }
    return true;
  }

  std::span<const std::string_view> keptMembers_;
  std::vector<Container> open_;  // the outermost first
  std::string text_;             // the parts so far of the text, name or number that is being read
  bool dropping_ = false;        // inside the value of a member that is not kept
  std::size_t droppedDepth_ = 0;
  JsonValue complete_;
};

// Nothing when Boost doesn't take `text` for JSON.
std::optional<JsonValue> parseStrictly(std::string_view text, std::span<const std::string_view> keptMembers) {
  json::parse_options options;
  options.max_depth = deepestNesting;
  json::basic_parser<ValueBuilder> parser(options, keptMembers);
  ValueBuilder::Error error;
  const std::size_t read = parser.write_some(false, text.data(), text.size(), error);
  if (error.failed() || read != text.size()) return std::nullopt;
  return parser.handler().take();
}

}  // namespace

// Boost refuses an escaped surrogate without its partner, and only later versions have an option to accept
// it. Such texts are rare, so we look for one only in a text that Boost has refused.
std::optional<JsonValue> JsonValue::parse(std::string_view text,
                                          std::span<const std::string_view> keptMembers) {
  if (std::optional<JsonValue> value = parseStrictly(text, keptMembers)) return value;
  const std::optional<std::string> repaired = withoutLoneSurrogates(text);
  return repaired ? parseStrictly(*repaired, keptMembers) : std::nullopt;
}

}  // namespace halvane
