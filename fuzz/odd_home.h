#pragma once

// A user with odd folders, files, settings and variables, and questions of theirs, made from a fuzzer's
// input.

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/current_folder.h"
#include "tests/support/scoped_variable.h"
#include "tests/support/temporary_home.h"

namespace halvane {

/// A home that is made from pieces, until this ends. A piece ends at a record separator (U+001E). Its first
/// byte says what it is. Its second byte says how often the text is repeated: a digit n for 4 to the power of
/// n, anything else for once. Then comes the text; where there is a unit separator (U+001F), a name stands in
/// front of it. Paths are below the journal that is taken without settings, or where it says so below the
/// home; they can't lead out.
///
///     F   a file: its path as the name, its content, or what is added to it
///     D   a folder: its path
///     C   a crowd of files: the start of their paths as the name, the content of each, repeated for each
///     L   a link: its path as the name, the path that it leads to, below the home
///     P   a named pipe
///     S   the settings' file
///     O   the earlier settings' file
///     R   journalRoot, below the home
///     A   LC_ALL
///     Z   TZ
///     Y   TZ, a path below the home
///     X   XDG_CONFIG_HOME, below the home
///     Q   a search for the text
///     T   a search for the text as a tag
///     N   the entries of the last year
///     E   read_entry with the text as its path
///     M   a line of the client's that is just the text
class OddHome {
 public:
  /// A line that a client writes, with its line feed.
  struct Message {
    std::string line;
    bool wantsReply;  ///< whether it is known to be a request
  };

  /// What is too much of `input` (any bytes) is left out: there are at most 4 messages and 64 KiB of texts.
  explicit OddHome(std::string_view input);

  /// Whether the journal, wherever the settings say that it is, lies in this home: nobody else's files are to
  /// be walked.
  bool holdsJournal() const;
  const std::vector<Message>& messages() const { return messages_; }
  /// How much there is in the home and in the variables, in bytes: the contents of files, read through links
  /// too, the names, and as much for each file and folder as a listing takes.
  std::size_t size() const;

 private:
  struct Piece;

  void take(const Piece& piece);
  void takeFileOrFolder(const Piece& piece);
  void takeCrowd(const Piece& piece);
  void takeVariable(const char* name, std::string value);
  void takeSettings(std::string_view suite, const std::string& content);
  void ask(const Piece& piece);

  TemporaryHome home_;
  CurrentFolder current_;
  std::list<ScopedVariable> variables_;
  std::vector<Message> messages_;
  std::size_t sizeOfVariables_ = 0;
};

}  // namespace halvane
