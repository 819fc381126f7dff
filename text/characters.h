#pragma once

// What a reader takes for one character.

#include <cstddef>
#include <memory>
#include <string_view>

namespace halvane {

/// The user-perceived characters of one text: its extended grapheme clusters (Unicode Annex 29).
class Characters {
 public:
  /// Of `text`, UTF-8, whose bytes must outlive this.
  explicit Characters(std::string_view text);
  ~Characters();
  Characters(const Characters&) = delete;
  Characters& operator=(const Characters&) = delete;

  /// The start of the character in which `position` lies: `position` itself between two characters and at
  /// either end of the text.
  std::size_t startOf(std::size_t position);
  /// The position `count` characters before the start `position`; 0 when fewer precede it.
  std::size_t back(std::size_t position, std::size_t count);
  /// The position `count` characters after the start `position`; the text's length when fewer follow.
  std::size_t forward(std::size_t position, std::size_t count);

 private:
  struct Iterator;
  Iterator& iterator();

  std::string_view text_;
  std::unique_ptr<Iterator> iterator_;
};

}  // namespace halvane
