#pragma once

#include <cstddef>

namespace halvane {

inline constexpr std::size_t mebibyte = 1 << 20;

inline double inMebibytes(std::size_t bytes) {
  return static_cast<double>(bytes) / static_cast<double>(mebibyte);
}

}  // namespace halvane
