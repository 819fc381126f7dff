#pragma once

// The memory that files are read into.

#include <cstddef>
#include <cstdlib>
#include <utility>

namespace halvane {

/// Raw memory that grows in place where the system can do that: realloc(3) moves the pages of a large block
/// instead of copying them, and what was never touched takes no memory.
class ByteBuffer {
 public:
  ByteBuffer() = default;
  ByteBuffer(const ByteBuffer&) = delete;
  ByteBuffer& operator=(const ByteBuffer&) = delete;
  ByteBuffer(ByteBuffer&& other) noexcept
      : data_(std::exchange(other.data_, nullptr)), capacity_(std::exchange(other.capacity_, 0)) {}
  ByteBuffer& operator=(ByteBuffer&& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(capacity_, other.capacity_);
    return *this;
  }
  ~ByteBuffer() { std::free(data_); }

  char* data() { return data_; }
  const char* data() const { return data_; }
  std::size_t capacity() const { return capacity_; }

  /// Makes the memory `capacity` bytes long (not 0), and keeps the bytes that fit. False, and nothing
  /// changed, when the memory can't be had.
  [[nodiscard]] bool resize(std::size_t capacity) {
    void* moved = std::realloc(data_, capacity);
    if (moved == nullptr) return false;
    data_ = static_cast<char*>(moved);
    capacity_ = capacity;
    return true;
  }

 private:
  char* data_ = nullptr;
  std::size_t capacity_ = 0;
};

}  // namespace halvane
