#include <gtest/gtest.h>

#include "tests/wire/held_conversation.h"

namespace halvane {
namespace {

const std::filesystem::path folderOfAll = "tests/wire/conversations_linux";

class ConversationOnLinux : public testing::TestWithParam<std::string> {};

TEST_P(ConversationOnLinux, GoesAsWritten) {
  holdConversation(folderOfAll / (GetParam() + ".txt"));
}

TEST_P(ConversationOnLinux, GoesAsWrittenWhenAllIsSentAtOnce) {
  holdConversationAtOnce(folderOfAll / (GetParam() + ".txt"));
}

INSTANTIATE_TEST_SUITE_P(Conversations, ConversationOnLinux, testing::ValuesIn(conversationsIn(folderOfAll)),
                         [](const auto& name) { return name.param; });

}  // namespace
}  // namespace halvane
