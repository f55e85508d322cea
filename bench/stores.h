#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "platform/database.h"
#include "support/temp_directory.h"
#include "util/clock.h"

namespace luming::bench {

/// What all benchmarks take for now.
const Clock& BenchClock();

/// The demonstration store, made once for each program, as an application directory.
const std::filesystem::path& DemoHome();

/// A copy of the demonstration store's directory, to be changed and thrown away.
class StoreCopy {
 public:
  StoreCopy();
  const std::filesystem::path& Home() const { return directory_.Path(); }
  std::filesystem::path File() const;
  std::unique_ptr<Connection> Connect() const;

 private:
  TempDirectory directory_;
};

/// So many rows of past years in the lines of receipts and in the movement log, spread over all drugs.
void AddHistory(const StoreCopy& store, int rows);

/// Brings the catalogue to so many drugs: those of the demonstration under further codes.
void GrowCatalogue(const StoreCopy& store, int drugs);

}  // namespace luming::bench
