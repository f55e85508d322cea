#pragma once

#include <cstdint>
#include <string>

#include "frame/app_context.h"

namespace luming {

/// One row of the movement log YPCRK, but for the operator, who is the one logged in.
struct Movement {
  std::string YPBM = {};
  double SL = 0;          ///< in the line's unit, with the line's own sign
  std::int16_t CLB = 1;   ///< the line's split ratio
  double KCL = 0;         ///< moved quantity in smallest units
  std::string DW = {};    ///< the line's unit
  bool in = true;         ///< a movement into the storehouse
  std::string MS = {};    ///< what kind of movement
  std::string RQ = {};    ///< when, in the default text form
  std::string KFBM = {};  ///< storehouse
  std::string BZ = {};    ///< reference to the document
};

/// @return false after a failure, which was shown; documents are saved all the same
bool AddMoveLog(AppContext& app, const Movement& movement);

/// Records an action that has no document. @return false after a failure, which was shown
bool AddServerLog(AppContext& app, const std::string& kind, const std::string& information);

}  // namespace luming
