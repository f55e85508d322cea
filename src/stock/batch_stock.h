#pragma once

#include <string>

#include "frame/app_context.h"

namespace luming {

/// Takes a quantity out of a drug's batches. Without a batch the oldest go first; what they cannot cover is dropped. A
/// named batch that is gone changes nothing; one that holds less than the quantity takes all batches of the drug with
/// it. Sweeps every batch, of any drug, that stands at or below zero.
///
/// Runs inside the caller's transaction and keeps its failures to itself: it shows the common box and returns, so that
/// the document is saved all the same.
/// @param quantity in smallest units
/// @param PH may be empty
void ConsumeBatch(AppContext& app, const std::string& YPBM, double quantity, const std::string& PH);

/// What follows a column to take a quantity off it: "-3", and "-(-3)" for a negative one, since two minus signs in a
/// row begin a comment.
std::string Less(double quantity);

/// What a document adds to the batches by one line.
struct BatchReceipt {
  std::string RKDH;  ///< document that creates the batch
  std::string YPBM;
  std::string PH;
  std::string XQ;     ///< as sent: a quoted date, or "Null"
  double SL = 0;      ///< smallest units
  std::string PFJ;    ///< as sent, of the line's unit
  std::string PLJ;    ///< as sent
  std::string today;  ///< "YYYY-MM-DD"
};

/// Adds to the batch of that drug and number, or creates it; an existing one keeps its dates and prices. Throws
/// Failure, also when the batch cannot be looked up.
/// @param insert_words each document has its own spelling of them
void AddToBatch(AppContext& app, const BatchReceipt& receipt, const std::string& insert_words = "Insert Into");

}  // namespace luming
