#pragma once

#include <string>

#include "util/failure.h"

namespace luming {

/// What the action ends with; a Failure without number and words when it does not fail.
template <class Action>
Failure Caught(Action action) {
  try {
    action();
  } catch (const Failure& failure) {
    return failure;
  }
  return {0, ""};
}

/// The number of the failure that the action ends with; 0 when it does not fail.
template <class Action>
long FailureOf(Action action) {
  return Caught(action).number();
}

/// What the action's failure says; empty when it does not fail.
template <class Action>
std::string WordsOf(Action action) {
  return Caught(action).description();
}

}  // namespace luming
