#pragma once

#include <array>
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
inline constexpr std::array kAllRights = {
    OperatorRight{"YPGL_CKYPML", &User_qx::YPGL_CKYPML}, OperatorRight{"YPGL_AddYP", &User_qx::YPGL_AddYP},
    OperatorRight{"YPGL_EditYP", &User_qx::YPGL_EditYP}, OperatorRight{"YPGL_DelYP", &User_qx::YPGL_DelYP},
    OperatorRight{"YPGL_CKJCML", &User_qx::YPGL_CKJCML}, OperatorRight{"YPGL_AddJCXM", &User_qx::YPGL_AddJCXM},
    OperatorRight{"YPGL_XGJCXM", &User_qx::YPGL_XGJCXM}, OperatorRight{"YPGL_DelJCXM", &User_qx::YPGL_DelJCXM},
    OperatorRight{"YPGL_YKJYLR", &User_qx::YPGL_YKJYLR}, OperatorRight{"YPGL_YKJYCX", &User_qx::YPGL_YKJYCX},
    OperatorRight{"YPGL_KSLYLR", &User_qx::YPGL_KSLYLR}, OperatorRight{"YPGL_KSLYCX", &User_qx::YPGL_KSLYCX},
    OperatorRight{"YPGL_SFXMGL", &User_qx::YPGL_SFXMGL}, OperatorRight{"YPGL_ADDZHXM", &User_qx::YPGL_ADDZHXM},
    OperatorRight{"YPGL_ZHXMGL", &User_qx::YPGL_ZHXMGL}, OperatorRight{"YPGL_YPTJ", &User_qx::YPGL_YPTJ},
    OperatorRight{"YPGL_JCXMTJ", &User_qx::YPGL_JCXMTJ}, OperatorRight{"YPGL_YPJCXMTJCX", &User_qx::YPGL_YPJCXMTJCX},
    OperatorRight{"YPGL_YPPD", &User_qx::YPGL_YPPD},     OperatorRight{"YPGL_YPPDCX", &User_qx::YPGL_YPPDCX},
    OperatorRight{"YPGL_BSBFLR", &User_qx::YPGL_BSBFLR}, OperatorRight{"YPGL_BSBFCX", &User_qx::YPGL_BSBFCX},
    OperatorRight{"YPGL_YPXHCX", &User_qx::YPGL_YPXHCX}, OperatorRight{"YPGL_CKFY", &User_qx::YPGL_CKFY},
    OperatorRight{"YPGL_CKFYCX", &User_qx::YPGL_CKFYCX}, OperatorRight{"YPGL_YPDCCX", &User_qx::YPGL_YPDCCX},
    OperatorRight{"YPGL_YPGCCX", &User_qx::YPGL_YPGCCX}, OperatorRight{"YPGL_SXYPCX", &User_qx::YPGL_SXYPCX},
    OperatorRight{"YPGL_EDITJG", &User_qx::YPGL_EDITJG}, OperatorRight{"YPGL_EDITKC", &User_qx::YPGL_EDITKC},
    OperatorRight{"YPGL_FSYP", &User_qx::YPGL_FSYP},     OperatorRight{"YPGL_XYKIN", &User_qx::XYKIN},
    OperatorRight{"YPGL_ZYKIN", &User_qx::ZYKIN},        OperatorRight{"YPGL_SeeReport", &User_qx::YPGL_SeeReport},
};

/// The right of that key, compared exactly; null when there is none.
constexpr const OperatorRight* FindRight(std::string_view key) {
  for (const OperatorRight& right : kAllRights) {
    if (right.key == key) return &right;
  }
  return nullptr;
}

/// A right as the program's own text names it: a key that is none of all rights does not compile.
class RightKey {
 public:
  consteval RightKey(const char* key) : right_(FindRight(key)) {  // NOLINT(google-explicit-constructor): reads as a key
    if (!right_) throw "there is no such right";
  }
  constexpr const OperatorRight* operator->() const { return right_; }

 private:
  const OperatorRight* right_;
};

/// Whether the operator has the right.
bool HasRight(const AppContext& app, RightKey key);

/// Shows the refusal for a right that the caller has found missing, in general words where the database has none for
/// it. Tests nothing itself.
void CheckRight(AppContext& app, RightKey key);
/// The same without naming a right: the refusal is in general words.
void CheckRight(AppContext& app);

}  // namespace luming
