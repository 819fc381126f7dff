#pragma once

// Reads texts by their names from property lists, the files in which applications keep settings.
//
// We don't use libplist. It keeps everything that a list contains, and it can't cope with every list: version
// 2.2 takes minutes for 15 MB of names or escapes, ends the process at 200,000 nested arrays, and follows a
// binary list that refers to itself. For XML, Expat's events are enough. The binary form is read in place.

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace halvane {

/// Texts by their names, UTF-8.
using PropertyTexts = std::map<std::string, std::string, std::less<>>;

/// The texts directly in a property list's outermost dictionary, without values of other kinds. Of equal
/// names, the last one counts. `list` is the list's raw bytes, XML or binary. Nothing when it is not a
/// property list, when its outermost value is not a dictionary, when it declares entities, or when it is
/// binary and repeats its texts to more than 64 Mi characters. Up to that, time and memory grow in proportion
/// to the size of `list`. The stack doesn't grow.
std::optional<PropertyTexts> textsOfPropertyList(std::string_view list);

/// The same for the binary form alone, which begins with "bplist".
std::optional<PropertyTexts> textsOfBinaryPropertyList(std::string_view list);

}  // namespace halvane
