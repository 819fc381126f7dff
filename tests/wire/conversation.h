#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace halvane {

/// A conversation as a file tells it, line by line. Those in tests/wire/conversations work on every system.
/// Those in tests/wire/conversations_linux need another clock or certain variables, which only Linux has.
///
///     # words for the reader
///     file: Documents/Halvane/a.md     a file below the home directory, with the lines that follow as its
///     | ---                            content: each line after "| ", each ended by a line feed
///     settings: app.halvane.Halvane    the property list of an application's settings, told in the same way
///     copy: examples                   a folder of this project whose content the home directory starts with
///     locale: de_DE                    the user's locale
///     zone: Europe/Berlin              the user's time zone
///     env: LANG=de_DE.UTF-8            a variable for the server, which otherwise has only HOME and PATH
///     home: Zoë's home                 what the home directory is called
///     folder: Documents                the server's current folder, below the home directory
///     clock: 2025-11-10T10:00:00Z      the time at which the server's clock stands still
///     > {"method":"ping"}              a line that the client sends
///     < {"jsonrpc":"2.0", ...}         a line that the server answers with
///
/// $HOME stands for the home directory everywhere but in these names.
struct Conversation {
  struct Turn {
    bool sent;  // by the client
    std::string line;
    int lineNumber;
  };

  struct File {
    std::string name;  // of settings, the application's
    std::string content;
    bool areSettings = false;
  };

  std::vector<File> files;
  std::string copied;  // empty when nothing is
  std::string locale;  // empty when the user has none
  std::string zone;    // empty when it is the system's
  std::vector<std::string> variables;
  std::string home = "home";
  std::string folder;
  std::string clock;  // empty when it goes as it should
  std::vector<Turn> turns;
};

/// Reads the file at `path`. Throws when a line of it is none of the above.
Conversation readConversation(const std::string& path);

/// `text` with `home` in place of $HOME.
std::string withHome(std::string_view text, std::string_view home);

}  // namespace halvane
