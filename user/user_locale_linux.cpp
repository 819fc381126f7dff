#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <utility>

#include "system/files.h"
#include "user/locale_setting.h"

namespace halvane {
namespace {

constexpr std::size_t longestSetting = 65536;

// The variables that set the language of dates, in order of precedence.
constexpr std::array<std::string_view, 3> variables = {"LC_ALL", "LC_TIME", "LANG"};

// The value of `name` in a file of shell assignments; empty when it has none.
std::string assignedIn(std::string_view file, std::string_view name) {
  std::string value;
  while (!file.empty()) {
    const std::size_t end = std::min(file.find('\n'), file.size());
    std::string_view line = file.substr(0, end);
    file.remove_prefix(std::min(end + 1, file.size()));
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    if (line.starts_with("export ")) line.remove_prefix(7);
    if (!line.starts_with(name) || !line.substr(name.size()).starts_with('=')) continue;
    line.remove_prefix(name.size() + 1);
    line = line.substr(0, line.find_last_not_of(" \t\r") + 1);
    const bool quoted = line.size() >= 2 && (line[0] == '"' || line[0] == '\'') && line.back() == line[0];
    value = quoted ? line.substr(1, line.size() - 2) : line;
  }
  return value;
}

// The POSIX name of the user's locale, such as de_DE.UTF-8; empty when none is set.
std::string localeName() {
  for (const std::string_view variable : variables) {
    const char* value = std::getenv(variable.data());
    if (value != nullptr && *value != '\0') return value;
  }
  for (const std::string_view path : {"/etc/locale.conf", "/etc/default/locale"}) {
    ByteBuffer buffer;
    const std::optional<std::string_view> settings = readFile(path, {}, buffer, longestSetting);
    if (!settings) continue;
    for (const std::string_view variable : variables) {
      if (std::string value = assignedIn(*settings, variable); !value.empty()) return value;
    }
  }
  return {};
}

// POSIX names a script by a modifier; the other modifiers, such as euro, mean nothing to a date.
std::string_view scriptOf(std::string_view modifier) {
  constexpr std::pair<std::string_view, std::string_view> scripts[] = {
      {"latin", "Latn"}, {"cyrillic", "Cyrl"}, {"devanagari", "Deva"}};
  for (const auto& [name, script] : scripts) {
    if (modifier == name) return script;
  }
  return {};
}

}  // namespace

std::string localeSetting() {
  const std::string name = localeName();
  const std::size_t end = std::min(name.find_first_of(".@"), name.size());
  const std::string plain = name.substr(0, end);
  if (plain == "C" || plain == "POSIX") return {};
  const std::size_t at = name.find('@');
  const std::string_view script =
      at == std::string::npos ? "" : scriptOf(std::string_view(name).substr(at + 1));
  std::string identifier = plain;
  if (!script.empty()) {
    const std::size_t language = std::min(plain.find('_'), plain.size());
    identifier = plain.substr(0, language).append("_").append(script).append(plain.substr(language));
  }
  return identifier;
}

}  // namespace halvane
