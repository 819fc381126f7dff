#include "user/hour_letters.h"

namespace halvane {
namespace {

// Goes through a pattern. Everything between apostrophes is text.
class PatternLetters {
 public:
  bool isHour(char letter) {
    if (letter == '\'') isText_ = !isText_;
    return !isText_ && std::string_view("hHkK").find(letter) != std::string_view::npos;
  }

 private:
  bool isText_ = false;
};

}  // namespace

char hourLetter(std::string_view pattern) {
  PatternLetters letters;
  for (const char letter : pattern) {
    if (letters.isHour(letter)) return letter;
  }
  return '\0';
}

std::string withShortHours(std::string_view pattern) {
  PatternLetters letters;
  std::string shortened;
  for (const char letter : pattern) {
    if (!letters.isHour(letter) || !shortened.ends_with(letter)) shortened += letter;
  }
  return shortened;
}

}  // namespace halvane
