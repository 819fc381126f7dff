#pragma once

#include <string_view>

namespace halvane {

// How file systems treat names. That of a Mac takes only text, and takes both forms of é for the same.

/// Whether temporary folders take a file called `name`, raw bytes.
bool takesName(std::string_view name);

/// Whether they take one whose name is not UTF-8.
bool takesNamesThatAreNoText();

/// Whether they keep two files apart whose names are canonically equivalent.
bool tellsSpellingsApart();

}  // namespace halvane
