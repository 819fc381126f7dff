#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

#include "system/byte_buffer.h"

namespace halvane {

/// What a file must begin with for the rest of it to be read; no openings at all means any file.
using Openings = std::span<const std::string_view>;

/// Reads the regular file at `path` (absolute, raw bytes, of any length) to its end into `buffer`, which
/// grows as needed and may be used again. Symbolic links are followed. The result is the file's raw bytes,
/// valid until the buffer is used again or gone; nothing when the file can't be opened, is not regular,
/// begins with none of `openings`, is longer than `limit` bytes, or fails before its end: half a file is
/// never returned. Never waits for a pipe or device. Throws std::bad_alloc when there is no memory for the
/// file.
std::optional<std::string_view> readFile(std::string_view path, Openings openings, ByteBuffer& buffer,
                                         std::size_t limit = SIZE_MAX);

/// What the system answers to whoever opens the file or folder at `path` (absolute, raw bytes, of any length)
/// to read it; no error when it lets us.
std::error_code errorOpening(std::string_view path);

/// The same for a path that must be a folder.
std::error_code errorOpeningFolder(std::string_view path);

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
/// descriptors are enough at any depth. Who wants to know what was passed over, a file that readFile would
/// not read or a folder that can't be opened, is told by `passOver`.
void readFilesBelow(
    const std::string& root, std::string_view suffix, Openings openings, const FileVisitor& visit,
    const PassedOver& passOver = [](std::string_view) {});

}  // namespace halvane
