#pragma once

namespace halvane::programs {

// The programs of this build and the place for its journals, by their paths.
inline constexpr const char* server = HALVANE_BENCH_SERVER;
inline constexpr const char* limit = HALVANE_BENCH_LIMIT;
inline constexpr const char* hello = HALVANE_BENCH_HELLO;
inline constexpr const char* echo = HALVANE_BENCH_ECHO;
inline constexpr const char* unfiltered = HALVANE_BENCH_UNFILTERED;
inline constexpr const char* cache = HALVANE_BENCH_CACHE;

}  // namespace halvane::programs
