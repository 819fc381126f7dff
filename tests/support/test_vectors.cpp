#include "tests/support/test_vectors.h"

#include <fstream>
#include <stdexcept>

namespace halvane {

std::vector<boost::json::object> vectorsIn(const std::string& file) {
  std::ifstream lines(HALVANE_TEST_VECTORS "/" + file);
  std::vector<boost::json::object> vectors;
  for (std::string line; std::getline(lines, line);) vectors.push_back(boost::json::parse(line).as_object());
  if (vectors.empty()) throw std::runtime_error("no vectors in " + file);
  return vectors;
}

std::string textOf(const boost::json::object& line, std::string_view member) {
  const boost::json::string& text =
      line.at(boost::json::string_view(member.data(), member.size())).as_string();
  return {text.data(), text.size()};
}

}  // namespace halvane
