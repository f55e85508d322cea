#pragma once

#include <cstdint>
#include <string>

#include "frame/app_context.h"
#include "platform/statement.h"

namespace luming {

/// What a line does to the batches of its drug.
enum class BatchEffect { kUntouched, kConsumed, kAdded };

/// What the lines of one kind of document do to the stock: counter, movement log and batches.
struct StockMove {
  bool in;                ///< goods enter the storehouse
  std::string kind;       ///< words of the log, MS
  const char* reference;  ///< of the log, ahead of the document's number, BZ
  const char* update;     ///< words ahead of the counter, each document has its own spelling of them
  const char* counter;    ///< YKKCL in that spelling
  BatchEffect batches;
  const char* batch_insert = "";  ///< words that create a batch; where batches are added to
};

/// What a quantity is in smallest units, to the six decimals that the store holds: eleven tenths of a pack of ten are
/// eleven, and no hair more.
double SmallestUnits(double quantity, double ratio);

/// One line of a document as the stock counts it. Statements are values as they are sent.
struct MovedLine {
  std::string YPBM;
  std::string DW;
  std::string PH;
  double quantity = 0;  ///< in the line's unit
  std::int16_t ratio = 1;
  Statement XQ;
  Statement PFJ;      ///< of a batch that the line creates
  Statement PLJ;      ///< of a batch that the line creates
  Statement further;  ///< what else of the drug's record the line sets, each column with a comma behind it

  double Moved() const { return SmallestUnits(quantity, ratio); }
};

/// Moves the stock by one line: what comes in goes to batches, counter and log, what goes out is taken off the counter,
/// logged and taken out of the batches. Runs inside the document's transaction; throws Failure, but those of the log
/// and of consumed batches are shown and leave the document alone.
/// @param number of the document, for the log and for batches that it creates
void MoveStock(AppContext& app, const StockMove& move, const MovedLine& line, const std::string& number);

}  // namespace luming
