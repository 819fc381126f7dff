#include <gtest/gtest.h>

#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// Lines that are more or less than well-written JSON in well-formed UTF-8.

namespace halvane {
namespace {

using namespace std::string_literals;

const std::string byteOrderMark = "\xEF\xBB\xBF";
const std::string ping = R"({"jsonrpc":"2.0","id":1,"method":"ping"})";
const std::string pingReply = R"({"jsonrpc":"2.0","id":1,"result":{}})";

// The reply to a tool call with such a text, the inside of a JSON string.
std::string replyWith(const std::string& text) {
  return R"({"jsonrpc":"2.0","id":1,"result":{"content":[{"type":"text","text":")" + text +
         R"("}],"isError":false}})";
}

class InputBytes : public testing::Test {
 protected:
  // Sees that `bytes` are answered with `reply`, and with that alone.
  void expectReply(const std::string& bytes, const std::string& reply) {
    ServerProcess server({.home = home_.path()});
    server.write(bytes);
    server.closeInput();
    const std::optional<std::string> answer = server.receive();
    ASSERT_TRUE(answer);
    EXPECT_EQ(canonicalJson(*answer), canonicalJson(reply)) << *answer;
    EXPECT_EQ(server.finish(), quietEnding);
  }

  // Sees that the line `bytes` gets no answer, and that the next line is served.
  void expectDropped(const std::string& bytes) { expectReply(bytes + "\n" + ping + "\n", pingReply); }

  // What comes back of a query that holds `bytes`.
  void expectQuery(const std::string& bytes, const std::string& query) {
    SCOPED_TRACE(query);
    expectReply(toolCall("search_entries", "{\"query\":\"" + bytes + "\"}") + "\n",
                replyWith(R"(No entries match \")" + query + R"(\".)"));
  }

  const TemporaryHome home_;
};

TEST_F(InputBytes, ACarriageReturnBeforeTheLineFeedIsWhiteSpace) {
  expectReply(ping + "\r\n", pingReply);
}

TEST_F(InputBytes, ALineOfACarriageReturnIsDropped) {
  expectDropped("\r");
}

TEST_F(InputBytes, ACarriageReturnEndsNoLine) {
  expectDropped(ping + "\r" + ping);
}

TEST_F(InputBytes, WhiteSpaceOfJsonAloneMayStandAroundAMessage) {
  expectReply(" \t\r" + ping + " \t\r\n", pingReply);
  for (const char* foreign : {"\v", "\f", "\u00A0", "\u0085", "\u2028", "\u200B"}) {
    SCOPED_TRACE(foreign);
    expectDropped(foreign + ping);
    expectDropped(ping + foreign);
  }
}

TEST_F(InputBytes, AByteOrderMarkBeforeAMessageIsSkipped) {
  expectReply(byteOrderMark + ping + "\n", pingReply);
  expectReply("\n" + byteOrderMark + " " + ping + "\n", pingReply);
}

TEST_F(InputBytes, AByteOrderMarkAnywhereElseIsNone) {
  expectDropped(byteOrderMark);
  expectDropped(byteOrderMark + byteOrderMark + ping);
  expectDropped(" " + byteOrderMark + ping);
  expectDropped(ping + byteOrderMark);
  expectQuery(byteOrderMark + "x", R"(\ufeffx)");
}

TEST_F(InputBytes, TheLastLineNeedsNoLineFeed) {
  expectReply(ping, pingReply);
}

TEST_F(InputBytes, AMessageMayComeInPieces) {
  ServerProcess server({.home = home_.path()});
  for (const char byte : ping + "\n") server.write({&byte, 1});
  EXPECT_EQ(canonicalJson(server.receive().value_or("")), canonicalJson(pingReply));
  EXPECT_EQ(server.finish(), quietEnding);
}

TEST_F(InputBytes, OtherLineSeparatorsMayStandInAText) {
  expectQuery("a\u2028b\u2029c\u0085d\x7F", R"(a\u2028b\u2029c\u0085d\u007f)");
}

TEST_F(InputBytes, ARawControlCharacterInATextIsNotJson) {
  for (const std::string& control : {"\0"s, "\x01"s, "\t"s, "\x1F"s}) {
    expectDropped(toolCall("search_entries", "{\"query\":\"" + control + "\"}"));
  }
}

TEST_F(InputBytes, ARawNulAroundAMessageIsNotJson) {
  expectDropped("\0"s);
  expectDropped(ping + "\0"s);
  expectDropped("\0"s + ping);
}

TEST_F(InputBytes, AnEscapedNulIsCarriedThrough) {
  expectQuery(R"(\u0000a\u0000)", R"(\u0000a\u0000)");
  expectReply(toolCall("read_entry", R"({"path":"~/Documents/Halvane/\u0000.md"})") + "\n",
              replyWith(R"(No entry found at ~/Documents/Halvane/\u0000.md.)"));
  expectReply(toolCall("list_recent", R"({"tag":"a\u0000b"})") + "\n",
              replyWith("No entries tagged ab in the last 7 days."));
}

TEST_F(InputBytes, BytesThatAreNoUtf8AreReplacedAndTheRequestAnswered) {
  expectQuery("\xFF", R"(\ufffd)");                                // no byte of UTF-8 at all
  expectQuery("a\x80z", R"(a\ufffdz)");                            // the rest of nothing
  expectQuery("\xC3", R"(\ufffd)");                                // a beginning without the rest
  expectQuery("\xF0\x9F\x8E.", R"(\ufffd.)");                      // three bytes of four: one piece
  expectQuery("\xC0\xAF", R"(\ufffd\ufffd)");                      // a slash, longer than it may be
  expectQuery("\xED\xA0\x80", R"(\ufffd\ufffd\ufffd)");            // a surrogate
  expectQuery("\xF4\x90\x80\x80", R"(\ufffd\ufffd\ufffd\ufffd)");  // past the last character
  expectQuery("\xE2\x82\xE2\x82\xAC", R"(\ufffd€)");               // a whole one after half of it
  expectQuery("caf\xE9", R"(caf\ufffd)");                          // Latin-1
}

TEST_F(InputBytes, ABadByteInAnIdentifierIsReplacedToo) {
  expectReply("{\"id\":\"\xFF\",\"method\":\"ping\"}\n", R"({"jsonrpc":"2.0","id":"\ufffd","result":{}})");
}

TEST_F(InputBytes, ABadByteOutsideATextIsNotJson) {
  expectDropped("\xFF" + ping);
  expectDropped(ping + "\x80");
}

}  // namespace
}  // namespace halvane
