// The message loop alone: many short lines, and one very long line.
#include <algorithm>
#include <thread>

#include "bench/conversation.h"
#include "bench/journal_cache.h"
#include "bench/measures.h"
#include "bench/memory.h"
#include "bench/programs.h"
#include "bench/rounds.h"

namespace halvane {
namespace {

constexpr int pingCount = 200'000;

std::string repeated(std::string_view line, int count) {
  std::string lines;
  for (int i = 0; i < count; ++i) lines += line;
  return lines;
}

// Writes while it reads: neither side may wait for the other to empty its pipe.
double secondsToAnswer(Child& child, std::string_view lines, std::size_t answerSize) {
  const Stopwatch watch;
  std::jthread writer([&] { child.write(lines); });
  child.skip(answerSize);
  return watch.seconds();
}

void measurePings(const Settings& settings, Report& report) {
  const std::string lines = repeated(pingLine, pingCount);
  Child server({settings.server}, settings.cache);
  Child echo({programs::echo}, settings.cache);
  const std::size_t replySize = ask(server, pingLine).size() + 1;
  const auto answering = [&] { return secondsToAnswer(server, lines, replySize * pingCount); };
  const auto echoing = [&] { return secondsToAnswer(echo, lines, lines.size()); };
  answering();
  const double memory = memoryOf(server.pid(), "VmRSS");
  const std::vector<Times> times = takeTurns({answering, echoing}, settings.rounds);
  report.add(goals::pings, "pings", medianRatio(times[1], times[0]));
  const double gained = memoryOf(server.pid(), "VmRSS") - memory;
  report.add(goals::pingMemory, "ping-memory", gained / (settings.rounds + 1));
}

// A ping with a member that nobody reads.
std::string longPing(std::size_t size) {
  std::string line(pingLine);
  const std::string_view member = R"(,"padding":"")";
  line.insert(line.size() - 2, std::string(member.substr(0, member.size() - 1)) +
                                   std::string(size - line.size() - member.size(), 'x') + '"');
  return line;
}

// Once through a pipe and away. It is given the time to start before the clock runs.
double secondsForCat(std::string_view line, const std::string& home) {
  Child cat({"sh", "-c", "exec cat > /dev/null"}, home);
  std::this_thread::sleep_for(std::chrono::milliseconds(20));
  const Stopwatch watch;
  cat.write(line);
  cat.finish();
  return watch.seconds();
}

void measureLongLine(const Settings& settings, Report& report) {
  constexpr std::size_t size = std::size_t{64} << 20;
  const std::string line = longPing(size);
  Child server({settings.server}, settings.cache);
  const std::vector<Times> times = takeTurns(
      {[&] { return secondsToAnswer(server, line); }, [&] { return secondsForCat(line, settings.cache); }},
      settings.rounds);
  report.add(goals::longLine, "long-line", medianRatio(times[0], times[1]));
  const double peak = memoryOf(server.pid(), "VmHWM") * 1e6;
  report.add(goals::longLineMemory, "long-line", peak / static_cast<double>(size));
}

}  // namespace

std::vector<Measurement> lineMeasurements() {
  return {{"pings", true, measurePings}, {"long-line", true, measureLongLine}};
}

}  // namespace halvane
