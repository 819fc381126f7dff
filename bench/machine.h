#pragma once

#include <string>

namespace halvane {

/// The machine in words: processor, cores, memory, system.
std::string machineInWords();

}  // namespace halvane
