#pragma once

#include <string>
#include <string_view>

namespace halvane {

/// An XML property list: a dictionary with the one key `key`, whose value is the element `value`, such as
/// <true/>.
std::string propertyListWith(std::string_view key, std::string_view value);

/// An XML property list that holds the text `value` under `key`.
std::string propertyListOfText(std::string_view key, std::string_view value);

}  // namespace halvane
