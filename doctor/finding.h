#pragma once

// What the doctor finds wrong in a journal.

#include <string>
#include <system_error>
#include <variant>

#include "journal/entry_parser.h"

namespace halvane {

/// What else may be wrong with a file or folder, besides the reasons why a file is not an entry.
enum class Trouble {
  notReadToItsEnd,  ///< it is named like an entry, but can't be read to its end, or is a link to something
                    ///< that is no file
  notRegular,       ///< it is named like an entry, but is a pipe, a socket or a device
  linkToFolder,     ///< it is a link to a folder
  otherExtension,   ///< it is named like Markdown, but its name doesn't end in .md
  noTag             ///< it is an entry whose tags line gives no tag
};

/// A file or folder below the journal that needs attention.
struct Finding {
  std::string path;  ///< absolute, raw bytes; a folder's ends in a slash
  std::variant<Refusal, Trouble, std::error_code> why;
};

}  // namespace halvane
