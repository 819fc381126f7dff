// Tags, from how people write them to their canonical form.
#include <benchmark/benchmark.h>

#include "journal/entry.h"

namespace halvane {
namespace {

void normalizeTag(benchmark::State& state, std::string_view tag) {
  for (auto _ : state) benchmark::DoNotOptimize(Entry::normalizeTag(tag));
}

void parseTags(benchmark::State& state, std::string_view value) {
  for (auto _ : state) benchmark::DoNotOptimize(Entry::parseTags(value));
}

BENCHMARK_CAPTURE(normalizeTag, canonical, "work");
BENCHMARK_CAPTURE(normalizeTag, capitals, "#Work And Travel");
BENCHMARK_CAPTURE(normalizeTag, decomposed, "E\u0301te\u0301 a\u0300 Paris");
BENCHMARK_CAPTURE(normalizeTag, japanese, "読書ノート");
BENCHMARK_CAPTURE(parseTags, canonical, "[work, garden, reading]");
BENCHMARK_CAPTURE(parseTags, mixed, "[#Arbeit, Gärten im Frühling, читать]");

}  // namespace
}  // namespace halvane
