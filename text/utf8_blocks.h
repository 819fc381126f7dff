#pragma once

#include <string_view>

namespace halvane {

/// The same answer as isUtf8, sixteen bytes at a time: most of a journal is read at the speed of memory, and
/// asking one code point after the other would cost half of that again. Only where canCheckInBlocks().
bool isUtf8InBlocks(std::string_view bytes);

/// The same, thirty-two bytes at a time: half the instructions. Only where hasWideBlocks().
bool isUtf8InWideBlocks(std::string_view bytes);

}  // namespace halvane
