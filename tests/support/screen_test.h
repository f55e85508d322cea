#pragma once

#include <gtest/gtest.h>

#include "screen/forms.h"
#include "support/scripted_desktop.h"
#include "support/temp_directory.h"
#include "util/clock.h"

namespace luming {

/// What a test of screens stands on: no window, a clock that stands still, a directory of its own.
class ScreenTest : public ::testing::Test {
 protected:
  TempDirectory directory;
  ScriptedDesktop desktop;
  FixedClock clock{DateTime(2026, 3, 1, 10, 0, 0)};
  Forms forms{desktop, clock};
  /// Keeps forms that close themselves until the test is over, as the running handler would.
  Forms::HandlerScope handler{forms};
};

}  // namespace luming
