#pragma once

#include <string>

namespace luming {

/// Why the system refused a file, as an operator can read it.
/// @param error the system's error number (errno)
std::string SystemReason(int error);

}  // namespace luming
