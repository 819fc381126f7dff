#include "bench/contestants.h"

#include <stdexcept>

#include "bench/conversation.h"

namespace halvane {
namespace {

// A comparison of searches that find different things would say nothing.
void check(bool found, const Search& search, const char* program) {
  if (found == search.finds) return;
  throw std::runtime_error(search.name + ": " + program + (found ? " found something" : " found nothing"));
}

}  // namespace

Contestant asking(Child& server, const Search& search) {
  return [&server, search] {
    const Stopwatch watch;
    const std::string_view reply = ask(server, search.line);
    const double seconds = watch.seconds();
    check(reply.find("No entries") == std::string_view::npos, search, "the server");
    return seconds;
  };
}

Contestant reading(Child& limit) {
  return [&limit] { return secondsToAnswer(limit, "\n"); };
}

Contestant ripgrep(const char* threads, const Search& search, const Journal& journal) {
  return [=] {
    const Stopwatch watch;
    Child rg({"rg", "--no-config", "-i", threads, "-l", "-F", "--", search.pattern, journal.folder()},
             journal.home);
    const std::string files = rg.finish();
    const double seconds = watch.seconds();
    check(!files.empty(), search, "rg");
    return seconds;
  };
}

}  // namespace halvane
