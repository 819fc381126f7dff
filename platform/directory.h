#pragma once

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
    std::size_t offset;  // of the name in the folder's list of names
    Kind kind;           // as the listing tells it
  };

  /// Lists the folder open as `descriptor`, without "." and "..", and without hidden items. What was listed
  /// before an error stays listed.
  void read(int descriptor);

  const std::vector<Item>& items() const { return items_; }
  /// An item's name, raw bytes, with a NUL behind it; valid until the next read.
  const char* name(const Item& item) const { return names_.data() + item.offset; }

 private:
  std::vector<Item> items_;
  std::string names_;
};

}  // namespace halvane
