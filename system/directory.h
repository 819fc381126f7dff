#pragma once

// What a folder holds.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace halvane {

/// The names in one folder, in the byte order of the names. Reusable: reading a folder forgets the one
/// before.
class Directory {
 public:
  enum class Kind : std::uint8_t { regular, folder, link, unknown, other };

  struct Item {
    std::size_t offset;    // of the name in the folder's list of names
    std::uint16_t length;  // of the name: no system's are longer
    Kind kind;             // as the listing tells it
  };

  /// Lists the folder open as `descriptor`, without "." and "..", and without hidden items. What was listed
  /// before an error stays listed.
  void read(int descriptor);

  const std::vector<Item>& items() const { return items_; }
  /// An item's name, raw bytes, with a NUL after it; valid until the next read.
  std::string_view name(const Item& item) const { return {names_.data() + item.offset, item.length}; }

 private:
  void add(std::string_view name, Kind kind) {
    items_.push_back({names_.size(), static_cast<std::uint16_t>(name.size()), kind});
    names_.append(name).push_back('\0');
  }
  void sortByName() {
    std::sort(items_.begin(), items_.end(),
              [this](const Item& left, const Item& right) { return name(left) < name(right); });
  }

  std::vector<Item> items_;
  std::string names_;
};

}  // namespace halvane
