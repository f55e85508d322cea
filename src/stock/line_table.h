#pragma once

#include <string_view>
#include <vector>

namespace luming {

/// What the delete button of a document does about the total row once the line is gone.
enum class AfterDelete {
  kNothing,
  kSumThenRemoveTotals,  ///< leaves no total until the next line is picked
  kRemoveTotalsThenSum,  ///< leaves a fresh total
};

/// Where the line grid scrolls to after a line was added.
enum class ScrollTo { kLastFive, kLastRow };

enum class Duplicates { kRefused, kReportedOnly };

/// What one document's lines are, and what its grid does in its own way. Columns are numbered from 1.
struct LineGridSettings {
  const char* screen;
  std::vector<const char*> captions;
  int hidden_columns;         ///< further columns at the end that the operator never sees
  std::vector<int> typed;     ///< columns that are edited in place
  std::vector<int> summed;    ///< columns of the total row after a line was picked; empty: no total row
  std::vector<int> resummed;  ///< columns of the total row after a deletion
  AfterDelete after_delete;
  ScrollTo scroll;
  Duplicates duplicates;
  const char* parked_file;  ///< name behind the storehouse's; null: the document cannot be parked
};

/// The settings of a screen; an unknown screen is a Failure.
const LineGridSettings& LineGridSettingsOf(std::string_view screen);

}  // namespace luming
