#pragma once

// What a folder holds.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace halvane {

/// The names in one folder, in the system's order, which may be any. Reusable: reading a folder forgets the
/// one before.
class Directory {
 public:
  enum class Kind : std::uint8_t { regular, folder, link, unknown, other };

  struct Item {
    std::size_t offset;    // of the name in the folder's list of names
    std::uint16_t length;  // of the name: no system's are longer
    Kind kind;             // as the listing tells it
  };

  /// Lists the folder open as `descriptor`, without "." and "..", and without hidden items. After an error,
  /// the items listed before it remain.
  void read(int descriptor);

  /// The system's error that broke off the last listing; no error when the listing came to its end.
  const std::error_code& error() const { return error_; }

  const std::vector<Item>& items() const { return items_; }
  /// An item's name, raw bytes, with a NUL after it; valid until the next read.
  std::string_view name(const Item& item) const { return {names_.data() + item.offset, item.length}; }

 private:
  // Takes over the NUL after the name too.
  void add(const char* name, Kind kind) {
    const std::size_t length = std::char_traits<char>::length(name);
    items_.push_back({names_.size(), static_cast<std::uint16_t>(length), kind});
    names_.append(name, length + 1);
  }

  std::vector<Item> items_;
  std::string names_;
  std::error_code error_;
};

}  // namespace halvane
