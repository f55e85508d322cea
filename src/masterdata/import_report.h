#pragma once

#include <set>
#include <string>
#include <string_view>

#include "frame/app_context.h"

namespace luming {

/// What fills the empty numbers of the catalogue after an import. It takes a figure of exactly 1 for an empty one.
std::string RepairStatements();

/// What an operator has to know of an import beside which rows went in: lines for the log, empty where all is well.
class ImportReport {
 public:
  explicit ImportReport(AppContext& app) : app_(app) {}

  /// A drug has come in.
  void Add(std::string_view code);

  /// The imported drugs that no list shows, that have no purchase price, or a flag that is neither set nor cleared.
  std::string Incomplete();

  /// The figures that the repairs are about to take for empty ones, to be asked ahead of them.
  std::string LostFigures();

 private:
  bool IsImported(const Value& code) const;

  AppContext& app_;
  std::set<std::string> imported_;  ///< as the database compares codes
};

}  // namespace luming
