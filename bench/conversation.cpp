#include "bench/conversation.h"

#include "bench/rounds.h"

namespace halvane {
namespace {

std::string callLine(std::string_view tool, const std::string& arguments) {
  return R"({"jsonrpc":"2.0","id":1,"method":"tools/call","params":{"name":")" + std::string(tool) +
         R"(","arguments":{)" + arguments + "}}}\n";
}

}  // namespace

std::string searchLine(std::string_view query) {
  return callLine("search_entries", R"("query":")" + std::string(query) + "\"");
}

std::string tagLine(std::string_view tag) {
  return callLine("search_entries", R"("query":"","tag":")" + std::string(tag) + "\"");
}

std::string recentLine(int days) {
  return callLine("list_recent", "\"days\":" + std::to_string(days));
}

std::string_view ask(Child& child, std::string_view line) {
  child.write(line);
  return child.readLine();
}

double secondsToAnswer(Child& child, std::string_view line) {
  const Stopwatch watch;
  ask(child, line);
  return watch.seconds();
}

}  // namespace halvane
