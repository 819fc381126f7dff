#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace halvane {

/// The names, without extension, of the conversations in `folder` of this project, in their order.
std::vector<std::string> conversationsIn(const std::filesystem::path& folder);

/// Holds the conversation in the file at `path` with a new server and a new home, line by line, and checks
/// that it goes as written.
void holdConversation(const std::filesystem::path& path);

/// The same for a client that sends all its lines at once.
void holdConversationAtOnce(const std::filesystem::path& path);

}  // namespace halvane
