#include <fcntl.h>
#include <sys/mman.h>
#include <unicode/unistr.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <boost/json.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/property.h"
#include "server/json.h"
#include "server/lone_surrogates.h"
#include "server/message_loop.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"

// A whole conversation, over a real pipe in and a file in memory out. The input is what the client writes:
// one of even length arrives in small pieces, one of odd length at once and across the end of the reader's
// first buffer. Every reply must be owed for a line, the replies must come in the order of the lines, and
// nothing else may come.

namespace halvane {
namespace {

namespace json = boost::json;

// Writes the journal that is talked about.
void writeJournal(const TemporaryHome& home) {
  home.write("2025/harbour.md", EntryFile{.durationSeconds = "754",
                                          .cleaned = "true",
                                          .tags = "[work, ideas]",
                                          .body = "Walked to the harbour.\nWrote the plan."}
                                    .text());
  home.write("2025/istanbul.md", EntryFile{.date = "2025-10-01T23:59:59+03:00",
                                           .tags = "İstanbul, #Deep Work",
                                           .body = "DİYARBAKIR ılık"}
                                     .text());
  home.write(
      "straße.md",
      EntryFile{.date = "1582-10-04T00:00:00Z", .body = "Straße \"q\" \\ / \t👍🏽\r\n e\u0301"}.text());
  home.write("future.md", EntryFile{.date = "9999-12-31T23:59:59Z", .language = "en", .body = ""}.text());
  home.write("2025/none.md", "no entry");
}

constexpr std::size_t longestInput = 16384;
constexpr std::size_t firstBuffer = 65536;
constexpr std::size_t most = 1 << 20;  // that a pipe holds: 256 pieces

// Standard input as a pipe and standard output as a file.
class Streams {
 public:
  Streams() {
    const int output = memfd_create("output", 0);
    mustHold(dup2(output, STDOUT_FILENO) == STDOUT_FILENO, "standard output can be a file in memory");
    close(output);
  }

  void feed(std::string_view input) {
    const bool inPieces = input.size() % 2 == 0;
    std::array<int, 2> ends;
    mustHold(pipe2(ends.data(), inPieces ? O_DIRECT : 0) == 0, "there can be a pipe");
    mustHold(fcntl(ends[1], F_SETPIPE_SZ, most) >= static_cast<int>(most), "a pipe can be large");
    if (inPieces) {
      writePieces(ends[1], input);
    } else {
      write(ends[1], std::string(firstBuffer - input.size() / 2, ' ') + "\n");
      write(ends[1], input);
    }
    close(ends[1]);
    mustHold(dup2(ends[0], STDIN_FILENO) == STDIN_FILENO, "standard input can be a pipe");
    close(ends[0]);
    mustHold(ftruncate(STDOUT_FILENO, 0) == 0 && lseek(STDOUT_FILENO, 0, SEEK_SET) == 0,
             "the output can be emptied");
  }

  std::string output() const {
    std::string bytes(static_cast<std::size_t>(lseek(STDOUT_FILENO, 0, SEEK_CUR)), '\0');
    mustHold(pread(STDOUT_FILENO, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()),
             "the output can be read");
    return bytes;
  }

 private:
  // In this kind of pipe what is written at once is read at once and alone.
  static void writePieces(int pipe, std::string_view input) {
    const std::size_t length = std::max(input.size() % 61 + 1, input.size() / 200 + 1);
    for (; !input.empty(); input.remove_prefix(std::min(length, input.size())))
      write(pipe, input.substr(0, length));
  }

  static void write(int pipe, std::string_view bytes) {
    mustHold(::write(pipe, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()),
             "the pipe has room");
  }
};

std::vector<std::string> linesOf(std::string_view bytes) {
  std::vector<std::string> lines;
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    lines.emplace_back(bytes.substr(0, end));
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
  }
  return lines;
}

std::optional<json::value> parsed(std::string_view text) {
  json::parse_options options;
  options.max_depth = 512;
  boost::system::error_code error;
  json::value value = json::parse(json::string_view(text), error, {}, options);
  return error ? std::nullopt : std::optional<json::value>(std::move(value));
}

std::string repaired(std::string_view line) {
  if (line.starts_with("\xEF\xBB\xBF")) line.remove_prefix(3);
  std::string text;
  icu::UnicodeString::fromUTF8({line.data(), static_cast<std::int32_t>(line.size())}).toUTF8String(text);
  return withoutLoneSurrogates(text).value_or(text);
}

// Every digit of the identifier in a message, as it is written; null where there is none.
std::string identifierIn(std::string_view message) {
  const std::array<std::string_view, 1> keptMembers = {"id"};
  const std::optional<JsonValue> value = JsonValue::parse(message, keptMembers);
  const JsonValue* id = value ? value->find("id") : nullptr;
  return id == nullptr ? "null" : id->serialise();
}

struct Owed {
  std::string method;
  std::string id;
  bool known;
};

// The reply that a line is owed; nothing for most.
std::optional<Owed> owedFor(const std::string& line) {
  const std::string text = repaired(line);
  const std::optional<json::value> message = parsed(text);
  if (!message || !message->is_object()) return std::nullopt;
  const json::value* method = message->as_object().if_contains("method");
  if (method == nullptr || !method->is_string()) return std::nullopt;
  const std::string name(method->as_string());
  if (name == "notifications/initialized" || name == "notifications/cancelled") return std::nullopt;
  const bool known = name == "initialize" || name == "ping" || name == "tools/list" || name == "tools/call";
  if (!known && !message->as_object().contains("id")) return std::nullopt;
  return Owed{name, identifierIn(text), known};
}

// The text of a tool's result must be the one thing in it.
bool isToolResult(const json::value& result) {
  return result.as_object().size() == 2 && !result.at("isError").as_bool() &&
         result.at("content").as_array().size() == 1 && result.at("content").at(0).as_object().size() == 2 &&
         result.at("content").at(0).at("type") == "text" && result.at("content").at(0).at("text").is_string();
}

void checkReply(const std::string& reply, const Owed& owed) {
  const std::optional<json::value> message = parsed(reply);
  mustHold(message && message->is_object(), "a reply is a JSON object on a line of its own");
  mustHold(message->as_object().size() == 3 && message->at("jsonrpc") == "2.0",
           "a reply is a JSON-RPC response");
  mustHold(identifierIn(reply) == owed.id, "a reply carries its request's identifier");
  if (!owed.known) {
    const json::value expected = {{"code", -32601}, {"message", "Method not found: " + owed.method}};
    mustHold(message->at("error") == expected, "an unknown method is named");
    return;
  }
  const json::value& result = message->at("result");
  if (owed.method == "ping") mustHold(result == json::object(), "a ping is answered with nothing");
  if (owed.method == "initialize") mustHold(result.as_object().size() == 3, "the server says who it is");
  if (owed.method == "tools/list")
    mustHold(result.at("tools").as_array().size() == 3, "there are three tools");
  if (owed.method == "tools/call")
    mustHold(isToolResult(result), "a tool answers with one text and no error");
}

}  // namespace
}  // namespace halvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace halvane;
  if (size > longestInput) return 0;
  static const TemporaryHome home;
  static Streams streams;
  [[maybe_unused]] static const bool written = (writeJournal(home), true);

  const std::string_view input(reinterpret_cast<const char*>(data), size);
  streams.feed(input);
  serveMessages();

  const std::string output = streams.output();
  mustHold(output.empty() || output.ends_with('\n'), "the last reply is whole");
  const std::vector<std::string> replies = linesOf(output);
  std::size_t count = 0;
  for (const std::string& line : linesOf(input)) {
    const std::optional<Owed> owed = owedFor(line);
    if (!owed) continue;
    mustHold(count < replies.size(), "every request has its reply");
    checkReply(replies[count++], *owed);
  }
  mustHold(count == replies.size(), "there is no reply that nobody asked for");
  return 0;
}
