#pragma once

#include <span>
#include <string>
#include <string_view>

namespace luming {

struct AppContext;

/// The operator who is logged in, and one flag for each right. Rights that a group's rows do not name keep the value
/// they had, also across a change of operator.
struct User_qx {
  bool YPGL_SeeReport = false;
  std::string SZSQ;
  bool QXSZ_Edit = false;
  bool QXSZ_See = false;
  std::string GetGroup;
  std::string GetUserName;
  std::string UserPassword;  ///< as typed, without single quotes
  bool YPGL_CKYPML = false;
  bool YPGL_AddYP = false;
  bool YPGL_EditYP = false;
  bool YPGL_DelYP = false;
  bool YPGL_CKJCML = false;
  bool YPGL_AddJCXM = false;
  bool YPGL_XGJCXM = false;
  bool YPGL_DelJCXM = false;
  bool YPGL_YKJYLR = false;
  bool YPGL_YKJYCX = false;
  bool YPGL_KSLYLR = false;
  bool YPGL_KSLYCX = false;
  bool YPGL_SFXMGL = false;
  bool YPGL_ADDZHXM = false;
  bool YPGL_ZHXMGL = false;
  bool YPGL_YPTJ = false;
  bool YPGL_JCXMTJ = false;
  bool YPGL_YPJCXMTJCX = false;
  bool YPGL_YPPD = false;
  bool YPGL_YPPDCX = false;
  bool YPGL_BSBFLR = false;
  bool YPGL_BSBFCX = false;
  bool YPGL_YPXHCX = false;
  bool YPGL_CKFY = false;
  bool YPGL_CKFYCX = false;
  bool YPGL_YPDCCX = false;
  bool YPGL_YPGCCX = false;
  bool YPGL_SXYPCX = false;
  bool YPGL_EDITJG = false;
  bool YPGL_EDITKC = false;
  bool YPGL_FSYP = false;
  bool XYKIN = false;  ///< key "YPGL_XYKIN"
  bool ZYKIN = false;  ///< key "YPGL_ZYKIN"
};

/// A right by its key in the groups' rows.
struct OperatorRight {
  std::string_view key;
  bool User_qx::*flag;
};

/// All rights that a group's rows can give, in the order in which a row's key is compared with them.
std::span<const OperatorRight> AllRights();
/// The right of that key, compared exactly; null when there is none.
const OperatorRight* FindRight(std::string_view key);

/// Whether the operator has the right of that key, one of AllRights().
bool HasRight(const AppContext& app, std::string_view key);

/// Shows the refusal for a right that the caller has found missing. Tests nothing itself.
/// @param key of the right; one that is unknown, or empty, gives the general wording
void CheckRight(AppContext& app, const std::string& key);

}  // namespace luming
