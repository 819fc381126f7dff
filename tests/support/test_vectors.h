#pragma once

#include <boost/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace halvane {

/// The lines of `tests/vectors/<file>`, each a JSON object. Throws when the file can't be read or holds none.
std::vector<boost::json::object> vectorsIn(const std::string& file);

/// The text that the line holds as `member`, which must be one.
std::string textOf(const boost::json::object& line, std::string_view member);

}  // namespace halvane
