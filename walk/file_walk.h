#pragma once

// How all files below a folder are read, one after the other.

#include <functional>
#include <string>
#include <string_view>

#include "system/files.h"
#include "walk/file_finder.h"

namespace halvane {

/// Called with a file's absolute path (raw bytes: the root as given, a slash, the names below it) and its
/// content (raw bytes); both are valid during the call only.
using FileVisitor = std::function<void(std::string_view path, std::string_view content)>;

/// Called with the absolute path of a file or folder that is passed over, a folder's with a slash at its end;
/// valid during the call only.
using PassedOver = std::function<void(std::string_view path)>;

/// Reads every file below the folder `root` (absolute, raw bytes, of any length) whose name ends in `suffix`
/// after at least one character, by the rules of readFile. A folder's files come first, then its sub-folders,
/// each in the byte order of their names. Hidden files and folders are left out, links to folders are not
/// entered, and what can't be read is passed over; a root that can't be read holds no files. Three file
/// descriptors are enough at any depth; a few more save time where paths are longer than a few hundred bytes,
/// and 32 more where the files are not in memory: then they are opened ahead of their turn, and a file is
/// read as it was found then. Folders are found from the root or from one in which the walk has been, never
/// by "..": a folder that is moved meanwhile doesn't lead anywhere else. Who wants to know what was passed
/// over, a file that readFile would not read or a folder that can't be opened, is told by `passOver`.
/// `seeFolder` is shown each folder that is entered, before its files.
void readFilesBelow(
    const std::string& root, std::string_view suffix, Openings openings, const FileVisitor& visit,
    const PassedOver& passOver = [](std::string_view) {},
    const FolderVisitor& seeFolder = [](std::string_view, const Directory&) {});

}  // namespace halvane
