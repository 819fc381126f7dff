#pragma once

#include <map>
#include <set>
#include <string>

namespace halvane {

/// The words in the code block below the line `heading` of docs/security.md.
std::set<std::string> documentedWords(const std::string& heading);

/// The table of system calls in docs/security.md: each call's name, and what its arguments must be, the
/// second column as it stands.
std::map<std::string, std::string> documentedCalls();

}  // namespace halvane
