#pragma once

#include <immintrin.h>

#include <cstdint>

// The sixteen bytes of any x86-64 processor (SSE2), and of those that can shuffle them (SSSE3).

namespace halvane {

#if defined(__SSSE3__)

struct Ssse3 {
  using Bytes [[gnu::vector_size(16)]] = std::uint8_t;

  static Bytes saturatingDifference(Bytes a, Bytes b) {
    return reinterpret_cast<Bytes>(_mm_subs_epu8(reinterpret_cast<__m128i>(a), reinterpret_cast<__m128i>(b)));
  }
  static std::uint32_t upperBits(Bytes bytes) {
    return static_cast<std::uint32_t>(_mm_movemask_epi8(reinterpret_cast<__m128i>(bytes)));
  }
  static Bytes lookUp(const std::uint8_t* table, Bytes indices) {
    const __m128i entries = _mm_loadu_si128(reinterpret_cast<const __m128i*>(table));
    return reinterpret_cast<Bytes>(_mm_shuffle_epi8(entries, reinterpret_cast<__m128i>(indices)));
  }
  template <int distance>
  static Bytes earlier(Bytes before, Bytes bytes) {
    return reinterpret_cast<Bytes>(
        _mm_alignr_epi8(reinterpret_cast<__m128i>(bytes), reinterpret_cast<__m128i>(before), 16 - distance));
  }
};

using CompiledFor = Ssse3;

#else

// Enough to look for pairs of bytes: the check of UTF-8 needs the shuffle.
struct Sse2 {
  using Bytes [[gnu::vector_size(16)]] = std::uint8_t;

  static std::uint32_t upperBits(Bytes bytes) {
    return static_cast<std::uint32_t>(_mm_movemask_epi8(reinterpret_cast<__m128i>(bytes)));
  }
};

using CompiledFor = Sse2;

#endif

}  // namespace halvane
