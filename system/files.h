#pragma once

// How a file is read whole, and what the system says when it can't be.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <system_error>

#include "system/byte_buffer.h"
#include "system/descriptor.h"
#include "system/read_ahead.h"

namespace halvane {

/// What a file must begin with for the rest of it to be read.
struct Beginning {
  /// One of these must be the file's first bytes; none at all means any file.
  std::span<const std::string_view> openings = {};
  /// Asked once about a file that isn't empty: whether it may be wanted, by its first bytes (raw): the
  /// opening and as much more as was read with it, cut anywhere. Empty: every file is wanted.
  std::function<bool(std::string_view firstBytes)> mayBeWanted = nullptr;
};

/// Reads the regular file at `path` (absolute, raw bytes, of any length) to its end into `buffer`, which
/// grows as needed and may be used again. Symbolic links are followed. The result is the file's raw bytes,
/// valid until the buffer is used again or gone; nothing when the file can't be opened, is not regular,
/// doesn't begin as `beginning` says, is longer than `limit` bytes, or fails before its end: half a file is
/// never returned. Never waits for a pipe or device. Throws std::bad_alloc when there is no memory for the
/// file.
std::optional<std::string_view> readFile(std::string_view path, const Beginning& beginning,
                                         ByteBuffer& buffer, std::size_t limit = SIZE_MAX);

/// The same, through `readAhead`, for a file that is open already, at its beginning, and whose kind and
/// length don't matter.
std::optional<std::string_view> readToEnd(const Descriptor& file, const Beginning& beginning,
                                          ByteBuffer& buffer, ReadAhead& readAhead);

/// Whether the open `file` is a regular one: no folder, pipe, socket or device.
bool isRegular(const Descriptor& file);

/// The system's error on opening the file or folder at `path` (absolute, raw bytes, of any length) to read
/// it; no error when it can be opened.
std::error_code errorOpening(std::string_view path);

/// The same for a path that must be a folder.
std::error_code errorOpeningFolder(std::string_view path);

}  // namespace halvane
