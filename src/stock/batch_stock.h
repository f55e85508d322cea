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

}  // namespace luming
