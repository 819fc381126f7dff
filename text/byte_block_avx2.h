#pragma once

#include <immintrin.h>

#include <cstdint>

// The thirty-two bytes of an x86-64 processor with AVX2: two halves of sixteen, which few instructions cross.

namespace halvane {

struct Avx2 {
  using Bytes [[gnu::vector_size(32)]] = std::uint8_t;

  static Bytes saturatingDifference(Bytes a, Bytes b) {
    return reinterpret_cast<Bytes>(
        _mm256_subs_epu8(reinterpret_cast<__m256i>(a), reinterpret_cast<__m256i>(b)));
  }
  static std::uint32_t upperBits(Bytes bytes) {
    return static_cast<std::uint32_t>(_mm256_movemask_epi8(reinterpret_cast<__m256i>(bytes)));
  }
  static Bytes lookUp(const std::uint8_t* table, Bytes indices) {
    const __m128i entries = _mm_loadu_si128(reinterpret_cast<const __m128i*>(table));
    return reinterpret_cast<Bytes>(
        _mm256_shuffle_epi8(_mm256_broadcastsi128_si256(entries), reinterpret_cast<__m256i>(indices)));
  }
  template <int distance>
  static Bytes earlier(Bytes before, Bytes bytes) {
    const auto block = reinterpret_cast<__m256i>(bytes);
    const __m256i between = _mm256_permute2x128_si256(reinterpret_cast<__m256i>(before), block, 0x21);
    return reinterpret_cast<Bytes>(_mm256_alignr_epi8(block, between, 16 - distance));
  }
};

using CompiledFor = Avx2;

}  // namespace halvane
