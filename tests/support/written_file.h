#pragma once

#include <string>
#include <string_view>

namespace halvane {

/// Writes a file, and the folders on the way to it where they are missing.
void writeFile(const std::string& path, std::string_view content);

/// Makes a folder, and those on the way to it where they are missing.
void makeFolder(const std::string& path);

/// Makes a symbolic link at `path` that leads to `target`, whether that is there or not.
void makeLink(const std::string& path, const std::string& target);

}  // namespace halvane
