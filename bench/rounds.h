#pragma once

#include <vector>

namespace luming::bench {

/// Seconds by the clock and of the processor's time of this thread.
struct Seconds {
  double whole = 0;
  double processor = 0;
};

inline Seconds operator-(const Seconds& end, const Seconds& begin) {
  return {end.whole - begin.whole, end.processor - begin.processor};
}

/// Counted from some moment in the past.
Seconds Now();

/// The time that one round in five stays under: what else the machine does only ever makes a round longer, by whole
/// slices of the scheduler.
Seconds Undisturbed(const std::vector<Seconds>& rounds);

}  // namespace luming::bench
