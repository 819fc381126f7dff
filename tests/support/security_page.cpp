#include "tests/support/security_page.h"

#include <fstream>
#include <sstream>
#include <vector>

namespace halvane {
namespace {

std::vector<std::string> linesBelow(const std::string& heading) {
  std::ifstream page(HALVANE_SOURCE_FOLDER "/docs/security.md");
  std::vector<std::string> lines;
  bool isBelow = false;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("#")) {
      isBelow = line == heading;
    } else if (isBelow) {
      lines.push_back(line);
    }
  }
  return lines;
}

}  // namespace

std::set<std::string> documentedWords(const std::string& heading) {
  std::set<std::string> words;
  for (const std::string& line : linesBelow(heading)) {
    if (!line.starts_with("    ")) continue;
    std::istringstream rest(line);
    for (std::string word; rest >> word;) words.insert(word);
  }
  return words;
}

std::map<std::string, std::string> documentedCalls() {
  std::map<std::string, std::string> calls;
  for (const std::string& line : linesBelow("### System calls")) {
    if (!line.starts_with("| `")) continue;
    const std::size_t nameEnd = line.find('`', 3);
    const std::size_t arguments = line.find('|', nameEnd) + 1;
    calls[line.substr(3, nameEnd - 3)] = line.substr(arguments, line.find('|', arguments) - arguments);
  }
  return calls;
}

}  // namespace halvane
