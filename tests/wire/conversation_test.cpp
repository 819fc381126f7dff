#include <gtest/gtest.h>

#include "tests/wire/held_conversation.h"

namespace halvane {
namespace {

const std::filesystem::path folderOfAll = "tests/wire/conversations";

class ConversationTest : public testing::TestWithParam<std::string> {};

TEST_P(ConversationTest, GoesAsWritten) {
  holdConversation(folderOfAll / (GetParam() + ".txt"));
}

// A client need not wait for an answer before it goes on, nor until the server listens.
TEST_P(ConversationTest, GoesAsWrittenWhenAllIsSentAtOnce) {
  holdConversationAtOnce(folderOfAll / (GetParam() + ".txt"));
}

INSTANTIATE_TEST_SUITE_P(Conversations, ConversationTest, testing::ValuesIn(conversationsIn(folderOfAll)),
                         [](const auto& name) { return name.param; });

}  // namespace
}  // namespace halvane
