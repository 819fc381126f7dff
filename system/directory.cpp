#include "system/directory.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace halvane {
namespace {

// The first bytes of `text` as a number, the first one counting most, with zeros where there are no more.
std::uint64_t keyOf(std::string_view text) {
  std::array<unsigned char, sizeof(std::uint64_t)> bytes{};
  std::memcpy(bytes.data(), text.data(), std::min(text.size(), bytes.size()));
  std::uint64_t key = 0;
  for (const unsigned char byte : bytes) key = key << 8 | byte;
  return key;
}

}  // namespace

// The names in a folder often begin with the same day or word. The bytes after that beginning tell most names
// apart, and comparing numbers is faster than comparing names.
void Directory::sortByName() {
  if (items_.empty()) return;
  std::string_view shared = name(items_.front());
  for (const Item& item : items_) {
    while (!name(item).starts_with(shared)) shared.remove_suffix(1);
  }
  for (Item& item : items_) item.key = keyOf(name(item).substr(shared.size()));
  std::sort(items_.begin(), items_.end(), [this](const Item& left, const Item& right) {
    return left.key != right.key ? left.key < right.key : name(left) < name(right);
  });
}

}  // namespace halvane
