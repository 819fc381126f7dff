#pragma once

#include <arm_neon.h>

#include <cstdint>

// The sixteen bytes of a 64-bit ARM processor (NEON).

namespace halvane {

struct Neon {
  using Bytes = uint8x16_t;

  static Bytes saturatingDifference(Bytes a, Bytes b) { return vqsubq_u8(a, b); }
  static std::uint32_t upperBits(Bytes bytes) {
    constexpr std::uint8_t places[16] = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
    const Bytes set = vandq_u8(vcltzq_s8(vreinterpretq_s8_u8(bytes)), vld1q_u8(places));
    return vaddv_u8(vget_low_u8(set)) | static_cast<std::uint32_t>(vaddv_u8(vget_high_u8(set))) << 8;
  }
  static Bytes lookUp(const std::uint8_t* table, Bytes indices) {
    return vqtbl1q_u8(vld1q_u8(table), indices);
  }
  template <int distance>
  static Bytes earlier(Bytes before, Bytes bytes) {
    return vextq_u8(before, bytes, 16 - distance);
  }
};

using CompiledFor = Neon;

}  // namespace halvane
