#pragma once

// Reads the messages of the client and answers them, until there are no more.

namespace halvane {

/// Answers the messages on standard input, one JSON-RPC 2.0 message of the Model Context Protocol on each
/// line, one after the other, until the input ends. Doesn't answer a line that is not JSON or has no method,
/// a notification that it knows, or an unknown method without an id. A message for which there is no memory
/// goes unanswered, and the next one is served.
void serveMessages();

}  // namespace halvane
