#pragma once

// Reads the messages of the client and answers them, until there are no more.

namespace halvane {

/// Answers the messages that come on standard input, one JSON-RPC 2.0 message of the Model Context Protocol a
/// line, one after the other, until the input ends. What can't be understood is dropped without a word. A
/// message for which there is no memory goes unanswered, and the next one is served.
void serveMessages();

}  // namespace halvane
