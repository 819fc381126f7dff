#include "tests/wire/messages.h"

#include <algorithm>
#include <boost/json.hpp>
#include <boost/json/basic_parser_impl.hpp>
#include <boost/system/error_code.hpp>
#include <cstdint>
#include <stdexcept>
#include <utility>
#include <vector>

namespace halvane {
namespace {

boost::json::string_view viewOf(std::string_view text) {
  return {text.data(), text.size()};
}

std::string joined(std::vector<std::string> pieces) {
  std::string text;
  for (std::string& piece : pieces) text.append(text.empty() ? "" : ",").append(piece);
  return text;
}

// Writes what the parser meets in its canonical form. Of a value, only its finished text is kept.
struct CanonicalWriter {
  static constexpr std::size_t max_object_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_array_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_key_size = static_cast<std::size_t>(-1);
  static constexpr std::size_t max_string_size = static_cast<std::size_t>(-1);
  using error_code = boost::system::error_code;
  using string_view = boost::json::string_view;

  std::vector<std::string> finished;
  std::string partial;

  bool finish(std::string text) {
    finished.push_back(std::move(text));
    return true;
  }
  bool add(string_view part) {
    partial.append(part.data(), part.size());
    return true;
  }
  std::string taken() { return std::exchange(partial, {}); }
  std::vector<std::string> take(std::size_t count) {
    const auto first = finished.end() - static_cast<std::ptrdiff_t>(count);
    std::vector<std::string> last(first, finished.end());
    finished.erase(first, finished.end());
    return last;
  }

  bool on_document_begin(error_code&) { return true; }
  bool on_document_end(error_code&) { return true; }
  bool on_object_begin(error_code&) { return true; }
  bool on_object_end(std::size_t count, error_code&) {
    const std::vector<std::string> pieces = take(2 * count);
    std::vector<std::string> members;
    for (std::size_t at = 0; at < pieces.size(); at += 2)
      members.push_back(pieces[at] + ":" + pieces[at + 1]);
    std::sort(members.begin(), members.end());
    return finish("{" + joined(members) + "}");
  }
  bool on_array_begin(error_code&) { return true; }
  bool on_array_end(std::size_t count, error_code&) { return finish("[" + joined(take(count)) + "]"); }
  bool on_key_part(string_view part, std::size_t, error_code&) { return add(part); }
  bool on_key(string_view part, std::size_t, error_code&) { return add(part) && finish(jsonString(taken())); }
  bool on_string_part(string_view part, std::size_t, error_code&) { return add(part); }
  bool on_string(string_view part, std::size_t, error_code&) {
    return add(part) && finish(jsonString(taken()));
  }
  bool on_number_part(string_view part, error_code&) { return add(part); }
  bool on_int64(std::int64_t, string_view part, error_code&) { return add(part) && finish(taken()); }
  bool on_uint64(std::uint64_t, string_view part, error_code&) { return add(part) && finish(taken()); }
  bool on_double(double, string_view part, error_code&) { return add(part) && finish(taken()); }
  bool on_bool(bool value, error_code&) { return finish(value ? "true" : "false"); }
  bool on_null(error_code&) { return finish("null"); }
  bool on_comment_part(string_view, error_code&) { return true; }
  bool on_comment(string_view, error_code&) { return true; }
};

}  // namespace

std::string toolCall(std::string_view tool, std::string_view arguments, std::string_view id) {
  return R"({"jsonrpc":"2.0","id":)" + std::string(id) + R"(,"method":"tools/call","params":{"name":")" +
         std::string(tool) + R"(","arguments":)" + std::string(arguments) + "}}";
}

std::string resultText(std::string_view reply) {
  const boost::json::value value = boost::json::parse(viewOf(reply));
  const boost::json::object& result = value.as_object().at("result").as_object();
  const boost::json::string& text = result.at("content").as_array().at(0).as_object().at("text").as_string();
  return {text.data(), text.size()};
}

std::string askTool(ServerProcess& server, std::string_view tool, std::string_view arguments) {
  server.send(toolCall(tool, arguments));
  const std::optional<std::string> reply = server.receive();
  if (!reply) throw std::runtime_error("no reply");
  return resultText(*reply);
}

bool answersPing(ServerProcess& server) {
  server.send(R"({"jsonrpc":"2.0","id":"are you there","method":"ping"})");
  const std::optional<std::string> reply = server.receive();
  return reply && canonicalJson(*reply) == R"({"id":"are you there","jsonrpc":"2.0","result":{}})";
}

std::string jsonString(std::string_view text) {
  return boost::json::serialize(boost::json::string(viewOf(text)));
}

std::optional<std::string> canonicalJson(std::string_view json) {
  boost::json::parse_options options;
  options.max_depth = 1000;
  boost::json::basic_parser<CanonicalWriter> parser(options);
  boost::system::error_code error;
  const std::size_t used = parser.write_some(false, json.data(), json.size(), error);
  if (error.failed() || used != json.size()) return std::nullopt;
  return parser.handler().finished.at(0);
}

}  // namespace halvane
