#pragma once

#include <string>
#include <vector>

#include "platform/database.h"

namespace luming {

/// A drug whose three stock figures, all in smallest units, are not the same.
struct Disagreement {
  std::string code;
  std::string name;
  double counter = 0;  ///< YKKCL of the catalogue
  double batches = 0;  ///< of YK_CurryPH
  double log = 0;      ///< what the movements since the last stock take come to
  /// Counter and log agree, and the batches are off since a stock take or a sale has left them alone: to be counted
  /// drug by drug, and no damage.
  bool only_batches = false;
  std::vector<std::string> last;  ///< the last movements, the newest first, one line each
};

/// Compares counter, batches and log of every drug. Reads only.
std::vector<Disagreement> FindDisagreements(Connection& connection);

/// An issue note that stands as confirmed although its stock has not moved: the second of the two calls never came
/// through.
struct UnmovedNote {
  std::string number;
  std::string confirmed;  ///< day, pharmacy and confirmer
};

/// Reads only.
std::vector<UnmovedNote> FindUnmovedNotes(Connection& connection);

/// The report of a store, as text for the operator. Failure when there is no store.
/// @param place application directory or connection string
/// @param agree set to whether everything agrees, but for batches that are to be counted, and no note waits for its stock
///              to be moved
std::string CheckStore(const std::string& place, bool& agree);

}  // namespace luming
