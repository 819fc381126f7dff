#include "tests/support/property_list.h"

namespace halvane {
namespace {

std::string escaped(std::string_view text) {
  std::string out;
  for (const char character : text) {
    switch (character) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      default:
        out += character;
    }
  }
  return out;
}

}  // namespace

std::string propertyListWith(std::string_view key, std::string_view value) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">\n<dict>\n<key>" + escaped(key) +
         "</key>\n" + std::string(value) + "\n</dict>\n</plist>\n";
}

std::string propertyListOfText(std::string_view key, std::string_view value) {
  return propertyListWith(key, "<string>" + escaped(value) + "</string>");
}

}  // namespace halvane
