#include <array>
#include <cerrno>
#include <cstring>

#include "system/directory.h"

// Declared as in <unistd.h>, to let this file compile on every system.
extern "C" int getattrlistbulk(int folder, void* attributes, void* block, std::size_t size,
                               std::uint64_t options);

namespace halvane {
namespace {

// Bits for the attributes of an item, in the order in which its record holds them; those of sys/attr.h.
constexpr std::uint32_t returnedAttributes = 0x80000000;
constexpr std::uint32_t errorAttribute = 0x20000000;
constexpr std::uint32_t nameAttribute = 0x00000001;
constexpr std::uint32_t kindAttribute = 0x00000008;
constexpr std::uint32_t flagsAttribute = 0x00040000;

// The kinds of sys/vnode.h and the flag of sys/stat.h that matter here.
constexpr std::uint32_t noKind = 0;
constexpr std::uint32_t regularKind = 1;
constexpr std::uint32_t folderKind = 2;
constexpr std::uint32_t linkKind = 5;
constexpr std::uint32_t hiddenFlag = 0x00008000;

// Attributes come in five groups: those of all items, of volumes, of folders, of files, of forks.
struct Attributes {
  std::uint32_t ofAll;
  std::uint32_t ofOthers[4];
};

struct AttributeList {
  std::uint16_t groupCount;
  std::uint16_t reserved;
  Attributes attributes;
};

// Stands in a record for its name: the bytes begin `offset` after this and end with a NUL.
struct NameReference {
  std::int32_t offset;
  std::uint32_t size;
};

Directory::Kind kindOf(std::uint32_t number) {
  switch (number) {
    case noKind:
      return Directory::Kind::unknown;
    case regularKind:
      return Directory::Kind::regular;
    case folderKind:
      return Directory::Kind::folder;
    case linkKind:
      return Directory::Kind::link;
    default:
      return Directory::Kind::other;
  }
}

// What the system tells of one item: the record's size, which attributes it holds, then these.
class Record {
 public:
  explicit Record(const char* begin) : next_(begin) {
    const auto size = take<std::uint32_t>();
    end_ = begin + size;
    held_ = take<Attributes>().ofAll;
    if (holds(errorAttribute)) error_ = take<std::uint32_t>();
    if (holds(nameAttribute)) {
      const char* const reference = next_;
      name_ = reference + take<NameReference>().offset;
    }
    if (holds(kindAttribute)) kind_ = kindOf(take<std::uint32_t>());
    if (holds(flagsAttribute)) flags_ = take<std::uint32_t>();
  }

  const char* end() const { return end_; }
  bool hasError() const { return error_ != 0; }
  bool isHidden() const { return *name_ == '.' || (flags_ & hiddenFlag) != 0; }
  const char* name() const { return name_; }
  Directory::Kind kind() const { return kind_; }

 private:
  bool holds(std::uint32_t attribute) const { return (held_ & attribute) != 0; }

  template <typename Value>
  Value take() {
    Value value;
    std::memcpy(&value, next_, sizeof value);
    next_ += sizeof value;
    return value;
  }

  const char* next_;
  const char* end_;
  std::uint32_t held_;
  std::uint32_t error_ = 0;
  const char* name_ = "";
  Directory::Kind kind_ = Directory::Kind::unknown;
  std::uint32_t flags_ = 0;
};

}  // namespace

// getattrlistbulk(2) tells the hidden flag along with names and kinds, many items at once. With readdir(3),
// the flag would take one more system call for each item.
void Directory::read(int descriptor) {
  items_.clear();
  names_.clear();
  error_.clear();
  AttributeList attributes = {
      5, 0, {returnedAttributes | errorAttribute | nameAttribute | kindAttribute | flagsAttribute, {}}};
  alignas(std::uint64_t) std::array<char, 32768> block;
  for (;;) {
    const int count = getattrlistbulk(descriptor, &attributes, block.data(), block.size(), 0);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) error_ = {errno, std::system_category()};
    if (count <= 0) break;
    const char* begin = block.data();
    for (int i = 0; i < count; ++i) {
      const Record record(begin);
      begin = record.end();
      if (record.hasError() || record.isHidden()) continue;
      add(record.name(), record.kind());
    }
  }
}

}  // namespace halvane
