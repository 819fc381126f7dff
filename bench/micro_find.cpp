// One query in one body of 100 KB that doesn't hold it, so that all of the body is looked at.
#include <benchmark/benchmark.h>

#include "bench/journal_text.h"
#include "search/text_search.h"

namespace halvane {
namespace {

void find(benchmark::State& state, const Language* language, std::string_view query) {
  const std::string body = journalBody(*language, 1, 100'000);
  const TextSearch search(query, LetterI::oneLetter);
  for (auto _ : state) benchmark::DoNotOptimize(search.find(body));
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(body.size()));
}

void makeReady(benchmark::State& state, std::string_view query) {
  for (auto _ : state) benchmark::DoNotOptimize(TextSearch(query, LetterI::oneLetter));
}

BENCHMARK_CAPTURE(find, english, &english, "zeppelin");
BENCHMARK_CAPTURE(find, english_one_letter, &english, "%");
BENCHMARK_CAPTURE(find, english_with_k_and_s, &english, "kiosk");
BENCHMARK_CAPTURE(find, german, mixedLanguages.data(), "möwenflügel");
BENCHMARK_CAPTURE(find, french_decomposed, &mixedLanguages[1], "éphémère");
BENCHMARK_CAPTURE(find, greek, &mixedLanguages[2], "κρόκος");
BENCHMARK_CAPTURE(find, russian, &mixedLanguages[4], "лаванда");
BENCHMARK_CAPTURE(find, hindi, &mixedLanguages[5], "कमल");
BENCHMARK_CAPTURE(find, chinese, cjkLanguages.data(), "灯塔");
BENCHMARK_CAPTURE(find, japanese, &cjkLanguages[1], "灯台");
BENCHMARK_CAPTURE(makeReady, short_query, "kingfisher");
BENCHMARK_CAPTURE(makeReady, sentence, "the heron that stood beside the weir for most of an afternoon");

}  // namespace
}  // namespace halvane
