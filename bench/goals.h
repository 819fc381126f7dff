#pragma once

#include <limits>
#include <string_view>

namespace halvane {

/// A figure that the server is held to: what is measured, in which unit, what it must be and what it could
/// be.
struct Goal {
  std::string_view name;
  std::string_view unit;
  double goal;
  double stretch;  // the goal again where nothing better is thought of
  bool higherIsBetter = false;

  bool isMet(double value) const { return higherIsBetter ? value >= goal : value <= goal; }
  bool isStretched(double value) const { return higherIsBetter ? value >= stretch : value <= stretch; }
};

namespace goals {

inline constexpr Goal searchEnglish = {"search, 10,000 English entries", "x limit", 1.12, 1.08};
inline constexpr Goal searchMixed = {"search, 10,000 entries in seven languages", "x limit", 1.18, 1.12};
inline constexpr Goal searchCjk = {"search, 10,000 Chinese and Japanese entries", "x limit", 1.18, 1.12};
inline constexpr Goal besideOneThread = {"any of these beside rg -i -j1 -l", "x rg -j1", 0.62, 0.55};
inline constexpr Goal besideTwoThreads = {"any of these beside rg -i -j2 -l", "x rg -j2", 1.05, 0.95};
inline constexpr Goal searchSmall = {"search, 1,000 English entries", "x limit", 1.20, 1.10};
inline constexpr Goal recent = {"list_recent, 365 days of 20 years, 10,000 entries", "x limit", 1.15, 1.10};
inline constexpr Goal cold = {"search, files on the disk, beside the fastest rg -i -l", "x rg", 1.15, 1.0};
inline constexpr Goal coldRecent = {"list_recent, files on the disk, beside the same", "x rg", 1.15, 1.0};
inline constexpr Goal sandboxedReading = {"reading alone inside the sandbox", "x limit", 1.08, 1.05};
inline constexpr Goal growth = {"an entry among 100,000 beside one among 10,000", "x limit's growth", 1.05,
                                1.01};
inline constexpr Goal hostile = {"search of a hostile journal", "x limit", 12, 8};
inline constexpr Goal start = {"start of the process to its first reply", "x hello world", 0.62, 0.45};
inline constexpr Goal firstSearch = {"first search beyond a later one", "x hello world", 1.0, 0.7};
inline constexpr Goal peakMemory = {"peak memory beyond twice the largest file", "MB", 12, 8.5};
inline constexpr Goal idleMemory = {"idle memory after searches, all", "MB", 10, 8};
inline constexpr Goal idleOwnMemory = {"idle memory after searches, anonymous", "MB", 2, 0.7};
inline constexpr Goal callsPerEntry = {"system calls an entry", "calls", 4, 4};
inline constexpr Goal callsPerFolder = {"system calls a folder", "calls", 4, 4};
inline constexpr Goal instructions = {"user instructions an English entry", "instructions", 6000, 3500};
inline constexpr Goal pings = {"pipelined pings, rate", "x echo's rate", 0.4, 0.6, true};
inline constexpr Goal pingMemory = {"memory gained by 200,000 pings", "MB", 0.1, 0};
inline constexpr Goal longLine = {"one line of 64 MiB", "x cat", 8, 5};
inline constexpr Goal longLineMemory = {"peak memory of that line", "x its size", 3, 3};

/// In the order of the table.
inline constexpr const Goal* all[] = {
    &searchEnglish,  &searchMixed,  &searchCjk,  &besideOneThread,  &besideTwoThreads, &searchSmall,
    &recent,         &cold,         &coldRecent, &sandboxedReading, &growth,           &hostile,
    &start,          &firstSearch,  &peakMemory, &idleMemory,       &idleOwnMemory,    &callsPerEntry,
    &callsPerFolder, &instructions, &pings,      &pingMemory,       &longLine,         &longLineMemory};

}  // namespace goals
}  // namespace halvane
