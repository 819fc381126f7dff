#pragma once

// What becomes of a locale that a setting names: the one of ICU's, or English where ICU has none.

#include <string>

namespace halvane {

/// `identifier` as ICU writes it; en_US when ICU has no words for its language or can't read the rest of it.
std::string knownLocale(const std::string& identifier);

}  // namespace halvane
