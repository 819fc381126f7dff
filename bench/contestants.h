#pragma once

#include <string>

#include "bench/child.h"
#include "bench/goals.h"
#include "bench/journal_cache.h"
#include "bench/rounds.h"

namespace halvane {

struct Search {
  std::string name;
  std::string line;     // what the server is asked
  std::string pattern;  // what ripgrep is asked: the word as it is written; empty where there is none
  bool finds;           // whether any entry holds it
  const Goal* goal;
};

/// The server, asked for `search`. A search that finds what it should not, or misses it, ends the run.
Contestant asking(Child& server, const Search& search);

/// The program that only reads the files.
Contestant reading(Child& limit);

/// A plain search for the same word with so many threads ("-j1"; "-j0" is as many as it likes). Its own
/// start is in the time, as it is for a person who types it.
Contestant ripgrep(const char* threads, const Search& search, const Journal& journal);

}  // namespace halvane
