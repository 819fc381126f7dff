#pragma once

namespace halvane {

/// Whether this processor can shuffle sixteen bytes at once, which isUtf8InBlocks needs: x86-64 ones have it
/// since about 2007 (SSSE3), 64-bit ARM ones always.
bool canCheckInBlocks();

/// Whether this processor works on thirty-two bytes at once: x86-64 ones mostly have since 2013 (AVX2).
bool hasWideBlocks();

}  // namespace halvane
