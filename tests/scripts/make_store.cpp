#include <iostream>

#include "app/store_maker.h"
#include "util/clock.h"
#include "util/failure.h"

/// make_store DIRECTORY: the demonstration store of 2026-03-01, the day that the operator scripts begin with.
int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const luming::FixedClock clock{luming::DateTime(2026, 3, 1, 8, 0, 0)};
  try {
    luming::MakeApplicationDirectory({.directory = argv[1], .data = LUMING_DATABASE_DIR, .demo = true}, clock);
    return 0;
  } catch (const luming::Failure& failure) {
    std::cerr << failure.description() << "\n";
    return 1;
  }
}
