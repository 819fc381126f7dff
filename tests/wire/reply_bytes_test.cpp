#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/entry_file.h"
#include "tests/support/temporary_home.h"
#include "tests/wire/messages.h"
#include "tests/wire/server_process.h"

// What a comparison as JSON doesn't see: the very bytes of a reply.

namespace halvane {
namespace {

// All that the server writes when it is sent `lines`.
std::string outputFor(const TemporaryHome& home, const std::string& lines) {
  ServerProcess server({.home = home.path()});
  server.write(lines);
  const Ending ending = server.finish();
  EXPECT_EQ(ending.status, 0);
  EXPECT_EQ(ending.errors, "");
  return ending.output;
}

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(ReplyBytes, AResultIsOneCompactLineEndedByOneLineFeed) {
  const TemporaryHome home;
  const std::string output = outputFor(home, "{\"jsonrpc\":\"2.0\",\"id\":1,\"method\":\"ping\"}\n");
  const std::string expected = R"({"jsonrpc":"2.0","id":1,"result":{}})";
  EXPECT_EQ(output.size(), expected.size() + 1);  // not a byte more, whatever the order of the members
  EXPECT_EQ(output.find('\n'), output.size() - 1);
  EXPECT_EQ(canonicalJson(output.substr(0, output.size() - 1)), canonicalJson(expected));
}

TEST(ReplyBytes, AnErrorIsOneCompactLineEndedByOneLineFeed) {
  const TemporaryHome home;
  const std::string output = outputFor(home, "{\"jsonrpc\":\"2.0\",\"id\":null,\"method\":\"x\"}\n");
  const std::string expected =
      R"({"jsonrpc":"2.0","id":null,"error":{"code":-32601,"message":"Method not found: x"}})";
  EXPECT_EQ(output.size(), expected.size() + 1);
  EXPECT_EQ(output.find('\n'), output.size() - 1);
  EXPECT_EQ(canonicalJson(output.substr(0, output.size() - 1)), canonicalJson(expected));
}

TEST(ReplyBytes, TheListOfToolsIsCompact) {
  const TemporaryHome home;
  const std::string output = outputFor(home, "{\"id\":1,\"method\":\"tools/list\"}\n");
  EXPECT_EQ(output.find('\n'), output.size() - 1);
  for (const char* loose : {": ", " :", "[ ", " ]", "{ ", " }", "\t", "\", ", "], ", "}, "}) {
    EXPECT_FALSE(holds(output, loose)) << loose;
  }
}

TEST(ReplyBytes, ACarriageReturnInTheRequestBringsNoneInTheReply) {
  const TemporaryHome home;
  const std::string output =
      outputFor(home, "{\"id\":1,\"method\":\"ping\"}\r\n{\"id\":2,\"method\":\"none\"}\r\n");
  EXPECT_EQ(output.find('\r'), std::string::npos);
  EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 2);
}

TEST(ReplyBytes, LineBreaksInATextAreEscaped) {
  const TemporaryHome home;
  const std::string path = home.write("a.md", EntryFile{.body = "one\r\ntwo\n\nthree"}.text());
  const std::string output =
      outputFor(home, toolCall("read_entry", "{\"path\":" + jsonString(path) + "}") + "\n");
  EXPECT_EQ(output.find('\n'), output.size() - 1);
  EXPECT_EQ(output.find('\r'), std::string::npos);
  EXPECT_TRUE(holds(output, R"(\n\none\r\ntwo\n\nthree")")) << output;
}

TEST(ReplyBytes, EverySlashInATextIsEscaped) {
  const TemporaryHome home;
  home.write("a/b.md", EntryFile{.body = "and/or"}.text());
  const std::string output = outputFor(
      home, toolCall("search_entries", R"({"query":"and\/or"})", R"({"id/s":["1/2","\/"]})") + "\n" +
                R"({"id":"/","method":"foo/bar"})"
                "\n" +
                R"({"id":1,"method":"initialize","params":{"protocolVersion":"a/b"}})"
                "\n");
  EXPECT_TRUE(holds(output, R"(\/Documents\/Halvane\/a\/b.md)")) << output;
  EXPECT_TRUE(holds(output, R"(and\/or)")) << output;
  EXPECT_TRUE(holds(output, R"({"id\/s":["1\/2","\/"]})")) << output;
  EXPECT_TRUE(holds(output, R"("Method not found: foo\/bar")")) << output;
  EXPECT_TRUE(holds(output, R"("a\/b")")) << output;
  for (std::size_t at = 0; (at = output.find('/', at)) != std::string::npos; ++at) {
    EXPECT_EQ(output[at - 1], '\\') << output.substr(0, at + 1);
  }
}

TEST(ReplyBytes, QuotationMarksAndBackslashesAreEscaped) {
  const TemporaryHome home;
  const std::string output = outputFor(home, R"({"id":"\u0022\u005c","method":"ping"})"
                                             "\n");
  EXPECT_TRUE(holds(output, R"("id":"\"\\")")) << output;
}

TEST(ReplyBytes, EveryControlCharacterIsEscaped) {
  const TemporaryHome home;
  std::string everyControl;
  for (int code = 0; code < 0x20; ++code) {
    everyControl += code < 0x10 ? "\\u000" : "\\u001";
    everyControl += "0123456789abcdef"[code % 16];
  }
  const std::string output = outputFor(home, "{\"id\":\"" + everyControl + "\",\"method\":\"ping\"}\n");
  for (const char character : output.substr(0, output.size() - 1)) {
    EXPECT_GE(static_cast<unsigned char>(character), 0x20);
  }
  EXPECT_EQ(canonicalJson(output.substr(0, output.size() - 1)),
            canonicalJson("{\"jsonrpc\":\"2.0\",\"id\":\"" + everyControl + "\",\"result\":{}}"));
}

TEST(ReplyBytes, OtherTextIsWrittenAsItIs) {
  const TemporaryHome home;
  const std::string output = outputFor(home, R"({"id":"\u00e9e\u0301\u65e5\ud83c\udf89","method":"ping"})"
                                             "\n");
  EXPECT_TRUE(holds(output, "\"id\":\"ée\u0301日🎉\"")) << output;
}

}  // namespace
}  // namespace halvane
