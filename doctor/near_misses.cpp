#include "doctor/near_misses.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

#include "system/files.h"

namespace halvane {
namespace {

using Kind = Directory::Kind;

// The extensions that people and editors give Markdown files, in small letters.
constexpr std::array<std::string_view, 5> extensions = {".md", ".markdown", ".mdown", ".mkd", ".md.txt"};

std::string inSmallLetters(std::string_view name) {
  std::string small(name);
  for (char& byte : small) {
    if (byte >= 'A' && byte <= 'Z') byte = static_cast<char>(byte | 0x20);
  }
  return small;
}

bool isNamedLikeMarkdown(std::string_view name) {
  const std::string small = inSmallLetters(name);
  return std::any_of(extensions.begin(), extensions.end(), [&](std::string_view extension) {
    return small.size() > extension.size() && small.ends_with(extension);
  });
}

// The kind of an item whose listing doesn't tell it.
Kind kindAt(const std::string& path) {
  std::error_code error;
  switch (std::filesystem::symlink_status(path, error).type()) {
    case std::filesystem::file_type::regular:
      return Kind::regular;
    case std::filesystem::file_type::directory:
      return Kind::folder;
    case std::filesystem::file_type::symlink:
      return Kind::link;
    default:
      return Kind::other;
  }
}

}  // namespace

std::optional<Trouble> nearMiss(std::string_view name, Kind kind, const std::string& path) {
  if (kind == Kind::unknown) kind = kindAt(path);
  if (kind == Kind::folder) return std::nullopt;
  if (name.ends_with(".md")) return kind == Kind::other ? std::optional(Trouble::notRegular) : std::nullopt;
  if (kind == Kind::link && !errorOpeningFolder(path)) return Trouble::linkToFolder;
  if (isNamedLikeMarkdown(name)) return Trouble::otherExtension;
  return std::nullopt;
}

}  // namespace halvane
