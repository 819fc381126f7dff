#pragma once

namespace halvane {

// What file systems make of names. A Mac's takes text alone, and takes é for the same however it is spelt.

/// Whether temporary folders take a file whose name is not UTF-8.
bool takesNamesThatAreNoText();

/// Whether temporary folders keep two files apart whose names are canonically equivalent.
bool tellsSpellingsApart();

}  // namespace halvane
