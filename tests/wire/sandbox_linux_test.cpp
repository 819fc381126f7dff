#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/entry_file.h"
#include "tests/support/lesser_kernel.h"
#include "tests/support/sanitizers.h"
#include "tests/support/security_page.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"
#include "tests/wire/tracer.h"

// What the kernel refuses the running server, and what the server does.

namespace halvane {
namespace {

using Texts = std::set<std::string>;

std::string statusOf(pid_t process, const std::string& name) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name + ":\t")) return line.substr(name.size() + 2);
  }
  return "";
}

TEST(SandboxOfTheServer, IsSeenFromOutside) {
  const TemporaryHome home;
  ServerProcess server({.home = home.path()});
  ASSERT_TRUE(answersPing(server));
  EXPECT_EQ(statusOf(server.id(), "NoNewPrivs"), "1");
  EXPECT_EQ(statusOf(server.id(), "Seccomp"), "2");
  EXPECT_EQ(statusOf(server.id(), "Threads"), "1");
}

TEST(SandboxOfTheServer, LeavesEverySignalAsItWasButTheOneOfAClosedPipe) {
  if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer takes signals for itself";
  const TemporaryHome home;
  ServerProcess server({.home = home.path()});
  ASSERT_TRUE(answersPing(server));
  EXPECT_EQ(statusOf(server.id(), "SigIgn"), "0000000000001000");
  EXPECT_EQ(statusOf(server.id(), "SigCgt"), "0000000000000000");
}

// As an old kernel answers, or a container that allows neither
void refuseSandboxes() {
  std::vector<RefusedCall> calls = callsOfLandlock();
  for (const RefusedCall& call : callsOfFilters()) calls.push_back(call);
  refuseCalls(calls);
}

TEST(SandboxOfTheServer, IsDoneWithoutInSilenceWhereTheKernelHasNone) {
  const TemporaryHome home;
  home.write("a.md", EntryFile{.body = "Walked to the harbour."}.text());
  ServerProcess server({.home = home.path(), .before = refuseSandboxes});
  EXPECT_NE(askTool(server, "search_entries", R"({"query":"harbour"})").find("Walked"), std::string::npos);
  EXPECT_EQ(server.finish(), quietEnding);
}

// One system call as the tracer shows it: name(arguments) = result.
struct Call {
  std::string name;
  std::string arguments;
  std::string result;
};

std::optional<Call> readCall(const std::string& line) {
  const std::size_t name = line.find_first_not_of("0123456789 ");
  const std::size_t arguments = line.find('(');
  const std::size_t result = line.rfind(" = ");
  if (name == std::string::npos || arguments == std::string::npos || result == std::string::npos) return {};
  return Call{line.substr(name, arguments - name), line.substr(arguments + 1, result - arguments - 1),
              line.substr(result + 3)};
}

// All system calls in a trace, as the tracer with `-y` shows them: with the path of each descriptor.
std::vector<Call> callsIn(const std::string& trace) {
  std::ifstream lines(trace);
  std::vector<Call> calls;
  for (std::string line; std::getline(lines, line);) {
    if (const std::optional<Call> call = readCall(line)) calls.push_back(*call);
  }
  return calls;
}

bool entersTheSandbox(const Call& call) {
  return call.name == "prctl" && call.arguments.starts_with("PR_SET_NO_NEW_PRIVS");
}

bool readsTheInput(const Call& call) {
  return call.name == "read" && call.arguments.starts_with("0<");
}

// The path that a call of any kind names first; empty when it names none.
std::string namedPath(const Call& call) {
  const std::size_t begin = call.arguments.find('"');
  if (call.name == "getrandom" || begin == std::string::npos) return "";
  const std::string text = call.arguments.substr(begin + 1, call.arguments.find('"', begin + 1) - begin - 1);
  return text.starts_with("/") ? text : "";
}

// The path that an openat(2) was for: the folder's own and the name in quotation marks.
std::string openedPath(const std::string& arguments) {
  const std::size_t begin = arguments.find('"') + 1;
  const std::string name = arguments.substr(begin, arguments.find('"', begin) - begin);
  if (name.starts_with("/")) return name;
  const std::size_t folder = arguments.find('<') + 1;
  return arguments.substr(folder, arguments.find('>') - folder) + "/" + name;
}

// Whether `path` is one of `patterns`; a pattern that ends in a slash stands for all that lies below it.
bool isOneOf(const Texts& patterns, const std::string& path) {
  for (const std::string& pattern : patterns) {
    if (path == pattern || path + "/" == pattern) return true;
    if (pattern.ends_with("/") && path.starts_with(pattern)) return true;
  }
  return false;
}

Texts replaced(const Texts& patterns, const std::string& word, const std::string& by) {
  Texts result;
  for (const std::string& pattern : patterns)
    result.insert(pattern.starts_with(word) ? by + pattern.substr(word.size()) : pattern);
  return result;
}

void holdWholeConversation(ServerProcess& server, const std::string& entry) {
  for (const char* line : {R"({"id":1,"method":"initialize","params":{"protocolVersion":"2025-06-18"}})",
                           R"({"method":"notifications/initialized"})", R"({"id":1,"method":"ping"})",
                           R"({"id":1,"method":"tools/list"})", R"({"id":1,"method":"resources/list"})"})
    server.send(line);
  for (int i = 0; i < 4; ++i) ASSERT_TRUE(server.receive());
  EXPECT_NE(askTool(server, "search_entries", R"({"query":"HARBOUR","tag":"#Work"})"), "");
  EXPECT_NE(askTool(server, "list_recent", R"({"days":365})"), "");
  for (const std::string& path :
       {entry, std::string("/etc/shadow"), entry + "/../../../../../../etc/shadow",
        std::string("~root/.bashrc"), std::string("~nobody/x.md"), std::string("a.md"), std::string()})
    EXPECT_NE(askTool(server, "read_entry", "{\"path\":" + jsonString(path) + "}"), "");
  EXPECT_NE(askTool(server, "write_entry", "{}"), "");
}

class TracedServer : public testing::Test {
 protected:
  void SetUp() override {
    if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer makes more system calls";
    if (!hasTracer()) GTEST_SKIP() << "there is no strace here";
    home_.setJournalRoot("app.halvane.Halvane", "~/Documents/Halvane");
    const std::string entry =
        home_.write("2025/11/a.md", EntryFile{.tags = "work", .body = "Walked to the harbour."}.text());
    const TemporaryFolder folder;
    const std::string trace = folder.below("trace");
    ServerProcess server(
        {.home = home_.path(), .before = [&] { becomeTracer(trace, {"-y"}, {"HOME=" + home_.path()}); }});
    holdWholeConversation(server, entry);
    EXPECT_EQ(server.finish(), quietEnding);
    const std::vector<Call> all = callsIn(trace);
    const auto sandbox = std::find_if(all.begin(), all.end(), entersTheSandbox);
    start_.assign(all.begin(), sandbox);
    calls_.assign(std::find_if(sandbox, all.end(), readsTheInput), all.end());
    ASSERT_GT(calls_.size(), 50U);
  }

  const TemporaryHome home_;
  std::vector<Call> start_;  // from the program's first moment until it enters the sandbox
  std::vector<Call> calls_;  // from the moment when it begins to read its input
};

TEST_F(TracedServer, NamesNoFileButItsOwnBeforeItEntersTheSandbox) {
  ASSERT_FALSE(start_.empty());
  EXPECT_EQ(start_.front().name, "execve");
  for (auto call = start_.begin() + 1; call != start_.end(); ++call) {
    const std::string path = namedPath(*call);
    const bool isLibrary = !HALVANE_STATIC && path.find(".so") != std::string::npos;
    EXPECT_TRUE(path.empty() || path == "/proc/self/exe" || isLibrary) << call->name << ": " << path;
    EXPECT_TRUE(HALVANE_STATIC == 0 || !call->name.starts_with("open")) << call->name << ": " << path;
    EXPECT_NE(call->name, "socket");
  }
}

TEST_F(TracedServer, CallsNothingButWhatReadingAndAnsweringTakes) {
  const std::map<std::string, std::string> allowed = documentedCalls();
  ASSERT_FALSE(allowed.empty());
  Texts others;
  for (const Call& call : calls_)
    if (!allowed.contains(call.name)) others.insert(call.name);
  EXPECT_EQ(others, Texts{});
}

TEST_F(TracedServer, OpensOnlyWhatIsDocumentedAndOnlyToRead) {
  const Texts allowed = replaced(replaced(documentedWords("### Files"), "~", home_.path()), "JOURNAL",
                                 home_.path() + "/Documents/Halvane");
  ASSERT_FALSE(allowed.empty());
  Texts opened;
  for (const Call& call : calls_) {
    if (call.name != "openat" && call.name != "open") continue;
    opened.insert(openedPath(call.arguments));
    EXPECT_NE(call.arguments.find("O_RDONLY"), std::string::npos) << call.arguments;
    for (const char* flag : {"O_WRONLY", "O_RDWR", "O_CREAT", "O_TRUNC"})
      EXPECT_EQ(call.arguments.find(flag), std::string::npos) << call.arguments;
  }
  EXPECT_TRUE(opened.contains(home_.path() + "/Documents/Halvane/2025/11/a.md"));
  EXPECT_TRUE(opened.contains("/etc/passwd"));
  for (const std::string& path : opened) EXPECT_TRUE(isOneOf(allowed, path)) << path;
}

TEST_F(TracedServer, WritesToItsOutputAlone) {
  std::size_t written = 0;
  for (const Call& call : calls_) {
    if (!call.name.starts_with("write") && !call.name.starts_with("pwrite")) continue;
    ++written;
    EXPECT_TRUE(call.arguments.starts_with("1<")) << call.arguments;
  }
  EXPECT_EQ(written, 14U) << "one reply, one write";
}

}  // namespace
}  // namespace halvane
