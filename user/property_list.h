#pragma once

// Property lists, the files in which applications keep settings, as far as texts by their names go.
//
// libplist would read them too. It keeps everything that a list holds, by means that don't bear any list:
// version 2.2 takes minutes for 15 MB of names or escapes, ends the process at 200,000 nested arrays, and
// follows a binary list that refers to itself. Expat's events are enough for XML, and the binary form is read
// where it stands.

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace halvane {

/// Texts by their names, UTF-8.
using PropertyTexts = std::map<std::string, std::string, std::less<>>;

/// The texts that a property list's outermost dictionary holds directly. Values of other kinds are passed
/// over; of equal names the last one counts. `list` is the list's raw bytes, XML or binary. Nothing when it
/// is no such list, when its outermost value is no dictionary, or when it declares entities of its own. Takes
/// time and memory in proportion to its size, and no stack that grows with it, whatever it holds.
std::optional<PropertyTexts> textsOfPropertyList(std::string_view list);

/// The same for the binary form alone, which begins with "bplist".
std::optional<PropertyTexts> textsOfBinaryPropertyList(std::string_view list);

}  // namespace halvane
