#pragma once

#include <string_view>

namespace halvane {

// What file systems make of names. A Mac's takes text alone, and takes é for the same however it is spelt.

/// Whether temporary folders take a file called `name`, raw bytes.
bool takesName(std::string_view name);

/// Whether they take one whose name is not UTF-8.
bool takesNamesThatAreNoText();

/// Whether they keep two files apart whose names are canonically equivalent.
bool tellsSpellingsApart();

}  // namespace halvane
