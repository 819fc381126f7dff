#pragma once

// Lays out a report, line by line.

#include <cstddef>
#include <string>
#include <string_view>

namespace halvane {

/// Collects the text of a report. Whatever is written to it, the text contains only printable characters, a
/// line feed at the end of each line, and the colours of the page.
class Page {
 public:
  /// With `colour` for a terminal, otherwise for a pipe or file.
  explicit Page(bool colour) : colour_(colour) {}

  /// A heading, after an empty line. All texts are raw bytes and end without a line feed.
  void heading(std::string_view text);
  /// An ordinary line.
  void line(std::string_view text);
  /// A line that needs attention, marked with "!".
  void attention(std::string_view text);
  /// The last line: whether all is well.
  void verdict();

  /// Whether nothing needs attention.
  bool isWell() const { return attentions_ == 0; }
  const std::string& text() const { return text_; }

 private:
  void write(std::string_view style, std::string_view text);

  bool colour_;
  std::string text_;
  std::size_t attentions_ = 0;
};

}  // namespace halvane
