#pragma once

// What the doctor finds out of order in a journal.

#include <string>
#include <system_error>
#include <variant>

#include "journal/entry_parser.h"

namespace halvane {

/// What is out of order about a file or folder, besides what stands in the way of its being an entry.
enum class Trouble {
  notReadToItsEnd,  ///< it is named like an entry, but is not read to its end, or no regular file
  notRegular,       ///< it is named like an entry, but is a pipe, a socket or a device
  linkToFolder,     ///< it is a link to a folder
  otherExtension,   ///< it is named like Markdown, but not as the server wants it
  noTag             ///< it is an entry with a tags line from which no tag comes
};

/// A file or folder below the journal that needs attention.
struct Finding {
  std::string path;  ///< absolute, raw bytes; a folder's ends in a slash
  std::variant<Refusal, Trouble, std::error_code> why;
};

}  // namespace halvane
