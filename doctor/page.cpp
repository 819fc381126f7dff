#include "doctor/page.h"

#include "doctor/printable.h"

namespace halvane {
namespace {

constexpr std::string_view bold = "\x1B[1m";
constexpr std::string_view red = "\x1B[31m";
constexpr std::string_view plain = "\x1B[0m";

}  // namespace

void Page::heading(std::string_view text) {
  if (!text_.empty()) text_ += '\n';
  write(bold, text);
}

void Page::line(std::string_view text) {
  text_.append("  ").append(printable(text)).append("\n");
}

void Page::attention(std::string_view text) {
  ++attentions_;
  write(red, "! " + std::string(text));
}

void Page::verdict() {
  text_ += '\n';
  if (isWell()) {
    text_.append("All is well.\n");
  } else {
    text_.append("Lines that need attention, marked with \"!\": ")
        .append(std::to_string(attentions_))
        .append("\n");
  }
}

void Page::write(std::string_view style, std::string_view text) {
  if (colour_) text_.append(style);
  text_.append(printable(text));
  if (colour_) text_.append(plain);
  text_ += '\n';
}

}  // namespace halvane
