#pragma once

namespace halvane::sandbox {

/// Gives up, for the rest of this process's life, whatever reading a journal and answering never needs: to
/// write, create, remove, rename or change files, to open sockets, to start processes, to trace or signal
/// others. The kernel refuses these from here on, whoever asks for them. What is open already stays usable.
/// Where the system has no means for it, nothing happens and nothing is said: the server needs none of what
/// is refused.
void enterReadOnly();

}  // namespace halvane::sandbox
