#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace halvane {

/// At most four byte values, any of which will do.
class ByteSet {
 public:
  static constexpr std::size_t most = 4;

  std::size_t size() const { return size_; }
  /// The values; behind the last one it is repeated.
  const std::array<std::uint8_t, most>& bytes() const { return bytes_; }
  /// False when there is no room for another value.
  [[nodiscard]] bool add(std::uint8_t byte);
  bool holds(std::uint8_t byte) const;

 private:
  std::size_t size_ = 0;
  std::array<std::uint8_t, most> bytes_{};
};

/// Finds the places in a body where a match of one query is possible at all, by looking at two of its bytes
/// for every place, sixteen places at once. Nearly every place of nearly every body is ruled out by that, at
/// the speed of memory; only what is left needs the exact comparison.
///
/// It looks for the seam between two neighbouring letters of the query. Whatever forms the two take in a body
/// (capital or small, composed or not, the Kelvin sign for a k), the last byte of the first one's form stands
/// right before the first byte of the second one's. Letters whose forms are not known for certain are not
/// used: those that may share one code point with a neighbour, such as the s of ß, and some with marks.
class SearchFilter {
 public:
  /// The filter for a query, given as the code points that it folds to (foldingOf); nothing when there is no
  /// place in it that would be safe to look for. `turkic` when dotted and dotless i are told apart.
  static std::optional<SearchFilter> forQuery(std::u32string_view units, bool turkic);

  /// The first possible place at or after `from`: the seam lies behind the byte at the place that is
  /// returned. std::string_view::npos when there is none.
  std::size_t next(std::string_view body, std::size_t from) const;

  /// The units of the query in front of the seam.
  std::size_t unitsBefore() const { return unitsBefore_; }

 private:
  std::size_t nextByByte(std::string_view body, std::size_t from, std::size_t end) const;

  ByteSet here_;   // the byte in front of the seam
  ByteSet there_;  // the byte `distance_` places behind that
  std::size_t distance_ = 0;
  std::size_t unitsBefore_ = 0;
};

}  // namespace halvane
