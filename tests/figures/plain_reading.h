#pragma once

#include <cstddef>
#include <string>

namespace halvane {

/// Reads every file in `folder` to its end, as every search must: lists the folder, opens each file, reads
/// until a read returns nothing, and closes it. Returns the number of bytes.
std::size_t readFilesIn(const std::string& folder);

/// Reads the file at `path` to its end, and drops it. The count of bytes.
std::size_t readWholeFile(const std::string& path);

/// Reads from `descriptor` to its end, and drops what comes. The count of bytes.
std::size_t readToEnd(int descriptor);

/// Reads from `descriptor` until a read ends with a line feed: one reply, where only one is to come. The
/// count of bytes.
std::size_t readReply(int descriptor);

}  // namespace halvane
