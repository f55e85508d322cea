#include <iostream>

#include "app/store_maker.h"
#include "app/store_place.h"
#include "platform/sql_script.h"
#include "util/clock.h"
#include "util/failure.h"
#include "util/whole_file.h"

/// make_store DIRECTORY: the demonstration store of 2026-03-01, the day that the operator scripts begin with, and the
/// drugs of the documents' scripts.
int main(int argc, char** argv) {
  if (argc != 2) return 2;
  const luming::FixedClock clock{luming::DateTime(2026, 3, 1, 8, 0, 0)};
  try {
    luming::MakeApplicationDirectory({.directory = argv[1], .data = LUMING_DATABASE_DIR, .demo = true}, clock);
    luming::RunScript(*luming::OpenStore(argv[1], clock), luming::ReadWholeFile(LUMING_SCRIPT_DRUGS).value());
    return 0;
  } catch (const luming::Failure& failure) {
    std::cerr << failure.description() << "\n";
    return 1;
  }
}
