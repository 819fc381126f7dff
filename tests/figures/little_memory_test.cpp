#include <gtest/gtest.h>
#include <sys/resource.h>

#include <string>
#include <vector>

#include "tests/figures/figure.h"
#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/support/units.h"
#include "tests/wire/messages.h"
#include "tests/wire/process_state.h"
#include "tests/wire/server_process.h"

// A system that gives the running server hardly any more memory.

namespace halvane {
namespace {

class LittleMemory : public testing::Test {
 protected:
  LittleMemory() {
    home_.write("a.md", EntryFile{.date = "2099-11-03T09:14:00Z", .body = "The harbour."}.text());
    EXPECT_TRUE(answersPing(server_));
    const rlimit little{addressSpace(server_.id()) + 16 * mebibyte, RLIM_INFINITY};
    EXPECT_EQ(prlimit(server_.id(), RLIMIT_AS, &little, nullptr), 0);
  }

  // Sends the request and a later message. The request may be answered, but then with a whole reply; the
  // message must be.
  void send(const std::string& request) {
    server_.send(request);
    server_.send(R"({"id":"later","method":"ping"})");
    std::string reply = server_.receive().value_or("");
    if (isPingsReply(reply)) {
      ++unanswered_;
    } else {
      ++(canonicalJson(reply) ? answered_ : torn_);
      reply = server_.receive().value_or("");
    }
    served_ += isPingsReply(reply) ? 1 : 0;
  }
  static bool isPingsReply(const std::string& reply) {
    return canonicalJson(reply) == R"({"id":"later","jsonrpc":"2.0","result":{}})";
  }

  // What grows with the number of mebibytes: a line, a reply, a file.
  std::vector<std::string> requestsOf(std::size_t mebibytes) {
    const std::string text(mebibytes * mebibyte, 'x');
    const std::string path = home_.write("large.md", EntryFile{.body = text}.text());
    return {R"({"id":1,"method":"ping","params":")" + text + "\"}",
            std::string(mebibytes * mebibyte, '['),
            toolCall("search_entries", "{\"query\":\"" + text + "\"}"),
            toolCall(text, "{}"),
            toolCall("search_entries", R"({"query":"harbour"})"),
            toolCall("list_recent", R"({"days":365})"),
            toolCall("read_entry", "{\"path\":" + jsonString(path) + "}")};
  }

  int answered_ = 0;
  int unanswered_ = 0;
  int torn_ = 0;
  int served_ = 0;  // of the later messages
  const TemporaryHome home_;
  ServerProcess server_{{.home = home_.path(), .variables = {"LC_ALL=en_US.UTF-8", "TZ=UTC"}}};
};

TEST_F(LittleMemory, LeavesEveryRequestAnsweredOrUnansweredAndTheNextOneServed) {
  int sent = 0;
  for (const std::size_t mebibytes : {0U, 1U, 2U, 4U, 6U, 8U, 12U, 16U, 32U, 64U, 0U, 1U}) {
    for (const std::string& request : requestsOf(mebibytes)) {
      send(request);
      ++sent;
    }
  }
  expectExactly("messages answered after large ones, with 16 MiB of address space left", served_, "messages",
                sent);
  expectExactly("torn replies meanwhile", torn_, "replies", 0);
  EXPECT_GT(answered_, sent / 5);
  EXPECT_GT(unanswered_, sent / 5) << "there was nearly always enough memory";
  EXPECT_TRUE(answersPing(server_));
  EXPECT_EQ(server_.finish(), quietEnding);
}

}  // namespace
}  // namespace halvane
