#pragma once

#include <cstddef>
#include <cstdint>

#if defined(__x86_64__)
#include <immintrin.h>
#elif defined(__aarch64__)
#include <arm_neon.h>
#endif

namespace halvane {

/// Sixteen bytes that are worked on at once, in one register of an x86-64 (SSE2) or ARM (NEON) processor.
/// Comparisons give a block with 0xFF where they hold and 0 elsewhere.
#if defined(__x86_64__)

struct ByteBlock {
  static constexpr std::size_t size = 16;
  __m128i bytes;

  static ByteBlock load(const void* from) { return {_mm_loadu_si128(static_cast<const __m128i*>(from))}; }
  static ByteBlock all(std::uint8_t byte) { return {_mm_set1_epi8(static_cast<char>(byte))}; }

  friend ByteBlock operator|(ByteBlock a, ByteBlock b) { return {_mm_or_si128(a.bytes, b.bytes)}; }
  friend ByteBlock operator&(ByteBlock a, ByteBlock b) { return {_mm_and_si128(a.bytes, b.bytes)}; }
  friend ByteBlock operator^(ByteBlock a, ByteBlock b) { return {_mm_xor_si128(a.bytes, b.bytes)}; }
  friend ByteBlock operator==(ByteBlock a, ByteBlock b) { return {_mm_cmpeq_epi8(a.bytes, b.bytes)}; }
  /// a - b, 0 where that would be negative.
  friend ByteBlock saturatingDifference(ByteBlock a, ByteBlock b) {
    return {_mm_subs_epu8(a.bytes, b.bytes)};
  }
  /// Each byte's upper half, as a number from 0 to 15.
  ByteBlock upperHalves() const { return {_mm_and_si128(_mm_srli_epi16(bytes, 4), _mm_set1_epi8(0x0F))}; }
  /// The upper bit of each byte, that of the first one lowest.
  std::uint32_t upperBits() const { return static_cast<std::uint32_t>(_mm_movemask_epi8(bytes)); }
#if defined(__SSSE3__)
  /// A table of sixteen entries, for lookUp.
  static ByteBlock table(const std::uint8_t* entries) {
    return load(entries);
  }
  /// The entry of the table at each index from 0 to 15.
  static ByteBlock lookUp(ByteBlock table, ByteBlock indices) {
    return {_mm_shuffle_epi8(table.bytes, indices.bytes)};
  }
  /// Each byte's neighbour `distance` places before it, where `before` is the block in front of this one.
  template <int distance>
  ByteBlock earlier(ByteBlock before) const {
    return {_mm_alignr_epi8(bytes, before.bytes, 16 - distance)};
  }
#endif
};

#if defined(__AVX2__)

/// The same for thirty-two bytes, on x86-64 processors that have AVX2.
struct WideByteBlock {
  static constexpr std::size_t size = 32;
  __m256i bytes;

  static WideByteBlock load(const void* from) {
    return {_mm256_loadu_si256(static_cast<const __m256i*>(from))};
  }
  static WideByteBlock all(std::uint8_t byte) { return {_mm256_set1_epi8(static_cast<char>(byte))}; }

  friend WideByteBlock operator|(WideByteBlock a, WideByteBlock b) {
    return {_mm256_or_si256(a.bytes, b.bytes)};
  }
  friend WideByteBlock operator&(WideByteBlock a, WideByteBlock b) {
    return {_mm256_and_si256(a.bytes, b.bytes)};
  }
  friend WideByteBlock operator^(WideByteBlock a, WideByteBlock b) {
    return {_mm256_xor_si256(a.bytes, b.bytes)};
  }
  friend WideByteBlock operator==(WideByteBlock a, WideByteBlock b) {
    return {_mm256_cmpeq_epi8(a.bytes, b.bytes)};
  }
  friend WideByteBlock saturatingDifference(WideByteBlock a, WideByteBlock b) {
    return {_mm256_subs_epu8(a.bytes, b.bytes)};
  }
  WideByteBlock upperHalves() const {
    return {_mm256_and_si256(_mm256_srli_epi16(bytes, 4), _mm256_set1_epi8(0x0F))};
  }
  std::uint32_t upperBits() const { return static_cast<std::uint32_t>(_mm256_movemask_epi8(bytes)); }
  // The table stands in both halves: a look-up doesn't cross from one to the other.
  static WideByteBlock table(const std::uint8_t* entries) {
    return {_mm256_broadcastsi128_si256(_mm_loadu_si128(reinterpret_cast<const __m128i*>(entries)))};
  }
  static WideByteBlock lookUp(WideByteBlock table, WideByteBlock indices) {
    return {_mm256_shuffle_epi8(table.bytes, indices.bytes)};
  }
  template <int distance>
  WideByteBlock earlier(WideByteBlock before) const {
    const __m256i between = _mm256_permute2x128_si256(before.bytes, bytes, 0x21);
    return {_mm256_alignr_epi8(bytes, between, 16 - distance)};
  }
};

#endif

#elif defined(__aarch64__)

struct ByteBlock {
  static constexpr std::size_t size = 16;
  uint8x16_t bytes;

  static ByteBlock load(const void* from) { return {vld1q_u8(static_cast<const std::uint8_t*>(from))}; }
  static ByteBlock all(std::uint8_t byte) { return {vdupq_n_u8(byte)}; }

  friend ByteBlock operator|(ByteBlock a, ByteBlock b) { return {vorrq_u8(a.bytes, b.bytes)}; }
  friend ByteBlock operator&(ByteBlock a, ByteBlock b) { return {vandq_u8(a.bytes, b.bytes)}; }
  friend ByteBlock operator^(ByteBlock a, ByteBlock b) { return {veorq_u8(a.bytes, b.bytes)}; }
  friend ByteBlock operator==(ByteBlock a, ByteBlock b) { return {vceqq_u8(a.bytes, b.bytes)}; }
  friend ByteBlock saturatingDifference(ByteBlock a, ByteBlock b) { return {vqsubq_u8(a.bytes, b.bytes)}; }
  ByteBlock upperHalves() const { return {vshrq_n_u8(bytes, 4)}; }
  std::uint32_t upperBits() const {
    constexpr std::uint8_t places[16] = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};
    const uint8x16_t set = vandq_u8(vcltzq_s8(vreinterpretq_s8_u8(bytes)), vld1q_u8(places));
    return vaddv_u8(vget_low_u8(set)) | static_cast<std::uint32_t>(vaddv_u8(vget_high_u8(set))) << 8;
  }
  static ByteBlock table(const std::uint8_t* entries) { return load(entries); }
  static ByteBlock lookUp(ByteBlock table, ByteBlock indices) {
    return {vqtbl1q_u8(table.bytes, indices.bytes)};
  }
  template <int distance>
  ByteBlock earlier(ByteBlock before) const {
    return {vextq_u8(before.bytes, bytes, 16 - distance)};
  }
};

#endif

}  // namespace halvane
