#include "tests/wire/conversation.h"

#include <fstream>
#include <optional>
#include <stdexcept>

namespace halvane {
namespace {

// The rest of `line` after `mark` and a blank; nothing when `line` begins with something else.
std::optional<std::string> after(std::string_view mark, std::string_view line) {
  if (!line.starts_with(mark)) return std::nullopt;
  line.remove_prefix(mark.size());
  if (line.starts_with(' ')) line.remove_prefix(1);
  return std::string(line);
}

bool takeLine(Conversation& conversation, const std::string& line, int number) {
  if (line.empty() || line.starts_with('#')) return true;
  if (const auto sent = after(">", line)) {
    conversation.turns.push_back({true, *sent, number});
  } else if (const auto answer = after("<", line)) {
    conversation.turns.push_back({false, *answer, number});
  } else if (const auto name = after("file:", line)) {
    conversation.files.push_back({*name, ""});
  } else if (const auto suite = after("settings:", line)) {
    conversation.files.push_back({*suite, "", true});
  } else if (const auto content = after("|", line); content && !conversation.files.empty()) {
    conversation.files.back().content += *content + "\n";
  } else if (const auto copied = after("copy:", line)) {
    conversation.copied = *copied;
  } else if (const auto locale = after("locale:", line)) {
    conversation.locale = *locale;
  } else if (const auto zone = after("zone:", line)) {
    conversation.zone = *zone;
  } else if (const auto variable = after("env:", line)) {
    conversation.variables.push_back(*variable);
  } else if (const auto home = after("home:", line)) {
    conversation.home = *home;
  } else if (const auto folder = after("folder:", line)) {
    conversation.folder = *folder;
  } else if (const auto clock = after("clock:", line)) {
    conversation.clock = *clock;
  } else {
    return false;
  }
  return true;
}

}  // namespace

Conversation readConversation(const std::string& path) {
  std::ifstream lines(path, std::ios::binary);
  if (!lines) throw std::runtime_error("can't read " + path);
  Conversation conversation;
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    if (!takeLine(conversation, line, ++number)) {
      throw std::runtime_error(path + ":" + std::to_string(number) + ": what is this?");
    }
  }
  return conversation;
}

std::string withHome(std::string_view text, std::string_view home) {
  constexpr std::string_view placeholder = "$HOME";
  std::string out;
  for (std::size_t at; (at = text.find(placeholder)) != std::string_view::npos;) {
    out.append(text.substr(0, at)).append(home);
    text.remove_prefix(at + placeholder.size());
  }
  return out.append(text);
}

}  // namespace halvane
