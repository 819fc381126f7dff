#include <fcntl.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <boost/json.hpp>
#include <cstdint>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/entry_file.h"
#include "tests/support/sanitizers.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/temporary_home.h"
#include "tests/support/written_file.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"
#include "tests/wire/tracer.h"

// Whatever system call fails, and however: one conversation again and again, in each of which another call
// fails, the first, the second and so on from the first reading of the input to the end.

namespace halvane {
namespace {

using Lines = std::vector<std::string>;

// What may become of the replies when one call fails.
enum class Toll { none, oneReply };

struct FallibleCall {
  const char* name;
  std::vector<std::string> spellings;  // the C library takes the one or the other, or both
  std::vector<std::string> results;    // as the tracer takes them
  Toll toll = Toll::none;
};

void PrintTo(const FallibleCall& call, std::ostream* out) {
  *out << call.name;
}

Lines errors(const Lines& names) {
  Lines results;
  for (const std::string& name : names) results.push_back("error=" + name);
  return results;
}

// The kernel's word for a refused brk(2) is no error but an end of the memory that lies below what was asked
// for.
const std::vector<FallibleCall> fallibleCalls = {
    {"openat", {"openat"}, errors({"EINTR", "EIO", "EACCES", "ENOENT", "EMFILE", "ENFILE", "ENOMEM"})},
    {"read", {"read"}, errors({"EINTR", "EIO", "EACCES", "ENOMEM"})},
    {"preadv2", {"preadv2"}, errors({"EAGAIN", "EINTR", "EIO", "EOPNOTSUPP", "ENOSYS", "EPERM"})},
    {"getdents64", {"getdents64"}, errors({"EINTR", "EIO", "EACCES", "ENOENT", "ENOMEM"})},
    {"fstat", {"fstat", "newfstatat"}, errors({"EIO", "EACCES", "ENOENT", "ENOMEM"})},
    {"close", {"close"}, errors({"EINTR", "EIO"})},
    {"write", {"write"}, errors({"EINTR", "EAGAIN", "EIO", "ENOSPC", "EPIPE"}), Toll::oneReply},
    {"mmap", {"mmap", "mremap"}, errors({"ENOMEM"}), Toll::oneReply},
    {"brk", {"brk"}, {"retval=0"}, Toll::oneReply}};

// The conversation's end, and what the tracer saw of it.
struct TracedLife {
  Ending ending;
  Lines calls;
};

Lines linesIn(std::istream&& stream) {
  Lines lines;
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

std::string nameOf(const std::string& call) {
  const std::size_t begin = std::min(call.find_first_not_of("0123456789 "), call.size());
  return call.substr(begin, call.find('(', begin) - begin);
}

bool readsInput(const std::string& call) {
  return call.find(" read(0,") != std::string::npos;
}

// The call that was made to fail; empty when none was.
std::string failedCall(const Lines& calls) {
  const auto found = std::find_if(calls.begin(), calls.end(), [](const std::string& call) {
    return call.find("(INJECTED)") != std::string::npos;
  });
  return found == calls.end() ? "" : *found;
}

// The replies by their identifiers. Each must be whole, none may come twice, and they must be in order.
std::map<std::int64_t, std::string> repliesIn(const std::string& output) {
  EXPECT_TRUE(output.empty() || output.ends_with('\n')) << output;
  std::map<std::int64_t, std::string> replies;
  for (const std::string& line : linesIn(std::istringstream(output))) {
    EXPECT_TRUE(canonicalJson(line)) << line;
    const std::int64_t id = boost::json::parse(line).as_object().at("id").as_int64();
    EXPECT_TRUE(replies.empty() || replies.rbegin()->first < id) << output;
    replies[id] = line;
  }
  return replies;
}

// The parts of a tool's text between empty lines.
std::set<std::string> partsOf(const std::string& reply) {
  std::string text = resultText(reply);
  std::set<std::string> parts;
  for (std::size_t end; (end = text.find("\n\n")) != std::string::npos; text.erase(0, end + 2))
    parts.insert(text.substr(0, end));
  parts.insert(text);
  return parts;
}

// Whether `reply` says nothing but what `right` says too. What could not be read may be missing from it.
bool saysNothingElse(const std::string& reply, const std::string& right) {
  if (reply == right) return true;
  if (reply.find("\"text\":\"No entr") != std::string::npos) return true;
  const std::set<std::string> parts = partsOf(reply);
  const std::set<std::string> rightParts = partsOf(right);
  return std::includes(rightParts.begin(), rightParts.end(), parts.begin(), parts.end());
}

class FaultInjection : public testing::TestWithParam<FallibleCall> {
 protected:
  void SetUp() override {
    if (underAddressSanitizer) GTEST_SKIP() << "the sanitizer makes more system calls";
    if (!hasTracer()) GTEST_SKIP() << "there is no strace here";
    home_.setJournalRoot(primarySuite, "~/Documents/Halvane");
    // Both lines are longer than the server reads at once, so reading can also fail half-way.
    const std::string padding(150000, 'x');
    for (const char* name : {"a.md", "b.md", "2099/c.md"}) {
      const std::string body = "The harbour." + (*name == 'b' ? "\n" + padding : "");
      home_.write(name, EntryFile{.date = "2099-11-03T09:14:00Z", .tags = "work", .body = body}.text());
    }
    writeFile(requests_, R"({"id":1,"method":"initialize","params":{"protocolVersion":"2025-06-18"}})"
                         "\n" +
                             toolCall("search_entries", R"({"query":"harbour","tag":"work"})", "2") + "\n" +
                             toolCall("list_recent", R"({"days":365,"path":")" + padding + "\"}", "3") +
                             "\n" + toolCall("read_entry", R"({"path":"~/Documents/Halvane/b.md"})", "4") +
                             "\n" + R"({"id":5,"method":"ping"})" + "\n");
    const TracedLife life = converse({"-e", "trace=" + names(GetParam()) + ",read"});
    ASSERT_EQ(life.ending.status, 0);
    right_ = repliesIn(life.ending.output);
    ASSERT_EQ(right_.size(), 5U);
    calls_ = life.calls;
  }

  static std::string names(const FallibleCall& call) {
    std::string all;
    for (const std::string& spelling : call.spellings) all.append(all.empty() ? "" : ",").append(spelling);
    return all;
  }

  TracedLife converse(Lines options) const {
    const TemporaryFolder folder;
    const std::string trace = folder.below("trace");
    options.emplace_back("-qq");
    ServerProcess server(
        {.home = home_.path(), .before = [&] {
           openAs(STDIN_FILENO, requests_, O_RDONLY);
           becomeTracer(trace, options, {"HOME=" + home_.path(), "LC_ALL=en_US.UTF-8", "TZ=UTC"});
         }});
    const Ending ending = server.finish();
    return {ending, linesIn(std::ifstream(trace))};
  }

  // Lets the `number`th call of this name since the process began fail once.
  void failOnce(const std::string& name, const std::string& result, std::size_t number) const {
    SCOPED_TRACE(name + " number " + std::to_string(number) + " fails with " + result);
    const std::string fault = name + ":" + result + ":when=" + std::to_string(number);
    const TracedLife life = converse({"-e", "trace=" + name, "-e", "inject=" + fault});
    const std::string failed = failedCall(life.calls);
    ASSERT_NE(failed, "") << "nothing failed";
    EXPECT_EQ(life.ending.status, 0);
    EXPECT_EQ(life.ending.errors, "");
    expectRightReplies(repliesIn(life.ending.output), readsInput(failed), result);
  }

  void expectRightReplies(const std::map<std::int64_t, std::string>& replies, bool inputFailed,
                          const std::string& result) const {
    const bool isNothingLost = result == "error=EINTR" || result == "error=EAGAIN";
    // Without memory, no answer comes, rather than an incomplete one.
    const bool isAllOrNothing = isNothingLost || GetParam().toll == Toll::oneReply;
    for (const auto& [id, reply] : replies) {
      const std::string& right = right_.at(id);
      EXPECT_TRUE(isAllOrNothing ? reply == right : saysNothingElse(reply, right)) << reply;
    }
    if (isNothingLost) {
      EXPECT_EQ(replies.size(), right_.size());
    } else if (inputFailed) {
      EXPECT_TRUE(replies.empty() || replies.rbegin()->first == static_cast<std::int64_t>(replies.size()));
    } else {
      EXPECT_GE(replies.size() + (GetParam().toll == Toll::oneReply ? 1 : 0), right_.size());
    }
  }

  const TemporaryHome home_;
  const std::string requests_ = home_.below("requests");
  std::map<std::int64_t, std::string> right_;
  Lines calls_;  // of a conversation in which nothing fails
};

TEST_P(FaultInjection, LeavesWholeRepliesInOrderAndTheOthersAnswered) {
  const auto firstReading = std::find_if(calls_.begin(), calls_.end(), readsInput);
  ASSERT_NE(firstReading, calls_.end());
  std::size_t faults = 0;
  for (const std::string& name : GetParam().spellings) {
    const auto isCall = [&](const std::string& call) { return nameOf(call) == name; };
    const auto before = static_cast<std::size_t>(std::count_if(calls_.begin(), firstReading, isCall));
    const auto calls = static_cast<std::size_t>(std::count_if(firstReading, calls_.end(), isCall));
    for (const std::string& result : GetParam().results) {
      for (std::size_t number = 1; number <= calls; ++number, ++faults)
        failOnce(name, result, before + number);
    }
  }
  EXPECT_GT(faults, 0U) << "the server makes no such call";
  RecordProperty("faults", static_cast<int>(faults));
}

INSTANTIATE_TEST_SUITE_P(SystemCalls, FaultInjection, testing::ValuesIn(fallibleCalls),
                         [](const auto& call) { return std::string(call.param.name); });

}  // namespace
}  // namespace halvane
