#pragma once

#include <cstdlib>

namespace luming {

/// Ends a fuzz target at a broken promise, so that the fuzzer keeps the input.
inline void Demand(bool held) {
  if (!held) std::abort();
}

}  // namespace luming
