#pragma once

#include <string_view>

namespace halvane::sandbox {

/// Gives up, for the rest of this process's life, every right that reading a journal and answering don't
/// need: to write, create, remove, rename or change files, to open sockets, to start processes; on Linux also
/// to look into, trace or signal other processes. From then on, the kernel refuses these to all code in this
/// process. Open files stay usable. Call it once, before there is a second thread.
///
/// Returns what this system can't refuse: one line for a person, ASCII without a line feed, valid for the
/// life of the program; empty when all of the above is refused. The program can run in any case.
std::string_view enterReadOnly();

}  // namespace halvane::sandbox
