#pragma once

#include <string_view>

namespace halvane::sandbox {

/// Gives up, for the rest of this process's life, whatever reading a journal and answering never needs: to
/// write, create, remove, rename or change files, to open sockets, to start processes; on Linux also to look
/// into, trace or signal other processes. The kernel refuses these from here on, whoever asks for them. What
/// is open already stays usable. To be called once, before there is a second thread.
///
/// Returns what is not refused because this system has no means for it: one line for a person, ASCII without
/// a line feed, in memory that lasts for good; empty where all of the above is refused. The program may run
/// in any case: it needs none of what is refused.
std::string_view enterReadOnly();

}  // namespace halvane::sandbox
