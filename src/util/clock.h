#pragma once

#include "util/date_time.h"

namespace luming {

/// What the program takes for now. Replaceable, so that no test reads real time.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual DateTime Now() const = 0;
  DateTime Today() const { return Now().Date(); }
};

/// The workstation's clock in its local time zone.
class SystemClock : public Clock {
 public:
  DateTime Now() const override;
};

/// A clock that stands still until it is set.
class FixedClock : public Clock {
 public:
  explicit FixedClock(DateTime now) : now_(now) {}
  DateTime Now() const override { return now_; }
  void Set(DateTime now) { now_ = now; }

 private:
  DateTime now_;
};

}  // namespace luming
