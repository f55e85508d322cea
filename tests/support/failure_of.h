#pragma once

#include "util/failure.h"

namespace luming {

/// The number of the failure that the action ends with; 0 when it does not fail.
template <class Action>
long FailureOf(Action action) {
  try {
    action();
  } catch (const Failure& failure) {
    return failure.number();
  }
  return 0;
}

}  // namespace luming
