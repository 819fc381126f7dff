#pragma once

#include <string_view>

namespace halvane {

/// The same answer as isUtf8, sixteen bytes at a time: most of a journal is read at the speed of memory, and
/// asking one code point after the other would cost half of that again. Only where canCheckInBlocks().
bool isUtf8InBlocks(std::string_view bytes);

/// Whether this processor has what isUtf8InBlocks needs: x86-64 ones have it since about 2007 (SSSE3), 64-bit
/// ARM ones always.
bool canCheckInBlocks();

}  // namespace halvane
