#pragma once

// How all files below a folder are read, one after the other.

#include <functional>
#include <string>
#include <string_view>

#include "system/files.h"
#include "walk/file_finder.h"

namespace halvane {

/// Called with a file's absolute path (raw bytes: the root as given, a slash, the names below it) and its
/// content (raw bytes). Both are valid only during the call.
using FileVisitor = std::function<void(std::string_view path, std::string_view content)>;

/// Called with the absolute path of a file or folder that is passed over. A folder's path ends in a slash.
/// Valid only during the call.
using PassedOver = std::function<void(std::string_view path)>;

/// Reads every file below the folder `root` (absolute, raw bytes, of any length) whose name ends in `suffix`
/// after at least one character, as readFile reads it with `beginning`. A folder's files come first, in any
/// order, then its sub-folders, against the byte order of their names: of folders that are named by dates,
/// the newest comes first. Leaves out hidden files and folders, doesn't enter links to folders, and passes
/// over what can't be read. A root that can't be read gives no files. Three file descriptors are enough at
/// any depth. A few more save time if paths are longer than a few hundred bytes, and 32 more if the files are
/// not in memory: then files are opened ahead of their turn, and read as they were at that moment. Opens
/// folders from the root or from a folder that the walk has entered, never by "..", so a folder that is moved
/// meanwhile doesn't lead out of the root. Calls `passOver` for each file that readFile would not read and
/// each folder that can't be opened, and `seeFolder` for each folder that it enters, before the folder's
/// files.
void readFilesBelow(
    const std::string& root, std::string_view suffix, const Beginning& beginning, const FileVisitor& visit,
    const PassedOver& passOver = [](std::string_view) {},
    const FolderVisitor& seeFolder = [](std::string_view, const Directory&) {});

}  // namespace halvane
